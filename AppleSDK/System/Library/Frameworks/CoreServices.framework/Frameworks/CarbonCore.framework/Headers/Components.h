// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#include <MacTypes.h>

// Global names, as in MacTypes.h.
typedef struct ComponentRecord ComponentRecord;
typedef ComponentRecord *Component;
typedef struct ComponentInstanceRecord ComponentInstanceRecord;
typedef ComponentInstanceRecord *ComponentInstance;
typedef struct ComponentDescription ComponentDescription;
typedef struct ComponentParameters ComponentParameters;
typedef struct RegisteredComponentRecord RegisteredComponentRecord;
typedef struct ResourceSpec ResourceSpec;
typedef SInt32 ComponentResult;
