// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#include <os/availability.h>
#include <stdint.h>

// Global names: a type or a function of ours with one of these does not compile.
typedef unsigned char UInt8;
typedef signed char SInt8;
typedef unsigned short UInt16;
typedef signed short SInt16;
typedef unsigned int UInt32;
typedef signed int SInt32;
typedef unsigned long long UInt64;
typedef signed long long SInt64;
typedef SInt32 Fixed;
typedef Fixed *FixedPtr;
typedef SInt32 Fract;
typedef Fract *FractPtr;
typedef UInt32 UnsignedFixed;
typedef UnsignedFixed *UnsignedFixedPtr;
typedef short ShortFixed;
typedef ShortFixed *ShortFixedPtr;
typedef float Float32;
typedef double Float64;
typedef struct Float80 Float80;
typedef struct Float96 Float96;
typedef struct Float32Point Float32Point;
typedef char *Ptr;
typedef Ptr *Handle;
typedef long Size;
typedef SInt16 OSErr;
typedef SInt32 OSStatus;
typedef void *LogicalAddress;
typedef const void *ConstLogicalAddress;
typedef void *PhysicalAddress;
typedef UInt8 *BytePtr;
typedef unsigned long ByteCount;
typedef unsigned long ByteOffset;
typedef SInt32 Duration;
typedef struct UnsignedWide UnsignedWide;
typedef UnsignedWide AbsoluteTime;
typedef UInt32 OptionBits;
typedef unsigned long ItemCount;
typedef UInt32 PBVersion;
typedef SInt16 ScriptCode;
typedef SInt16 LangCode;
typedef SInt16 RegionCode;
typedef UInt32 FourCharCode;
typedef FourCharCode OSType;
typedef FourCharCode ResType;
typedef OSType *OSTypePtr;
typedef ResType *ResTypePtr;
typedef unsigned char Boolean;
typedef long (*ProcPtr)(void);
typedef void (*Register68kProcPtr)(void);
typedef ProcPtr UniversalProcPtr;
typedef UInt32 UnicodeScalarValue;
typedef UInt32 UTF32Char;
typedef UInt16 UniChar;
typedef UInt16 UTF16Char;
typedef UInt8 UTF8Char;
typedef UniChar *UniCharPtr;
typedef unsigned long UniCharCount;
typedef UniCharCount *UniCharCountPtr;
typedef unsigned char Str255[256];
typedef unsigned char Str63[64];
typedef unsigned char Str32[33];
typedef unsigned char Str31[32];
typedef unsigned char Str27[28];
typedef unsigned char Str15[16];
typedef unsigned char *StringPtr;
typedef StringPtr *StringHandle;
typedef const unsigned char *ConstStringPtr;
typedef const unsigned char *ConstStr255Param;
typedef struct Point Point;
typedef Point *PointPtr;
typedef struct Rect Rect;
typedef Rect *RectPtr;
typedef struct FixedPoint FixedPoint;
typedef struct FixedRect FixedRect;
typedef short CharParameter;
typedef unsigned char Style;
typedef short StyleParameter;
typedef Style StyleField;
typedef SInt32 TimeValue;
typedef SInt32 TimeScale;
typedef SInt64 TimeValue64;
typedef SInt64 CompTimeValue;
typedef struct TimeBaseRecord *TimeBase;
typedef struct TimeRecord TimeRecord;
typedef UInt8 Byte;
typedef SInt8 SignedByte;
typedef struct NumVersion NumVersion;
typedef struct VersRec VersRec;
typedef struct wide wide;

enum { normal = 0, bold = 1, italic = 2, underline = 4, outline = 8, shadow = 0x10, condense = 0x20, extend = 0x40 };
enum { noErr = 0 };

#ifdef __cplusplus
extern "C" {
#endif

void Debugger(void) API_DEPRECATED("", macos(10.0, 10.8));
void DebugStr(ConstStr255Param text) API_DEPRECATED("", macos(10.0, 10.8));
void SysBreak(void) API_DEPRECATED("", macos(10.0, 10.8));

#ifdef __cplusplus
}
#endif
