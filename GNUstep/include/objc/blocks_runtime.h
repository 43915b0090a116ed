// GNUstep's headers include this name, which GCC's Objective-C runtime does not bring.
#include <Block.h>
