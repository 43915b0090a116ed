// Text and paths for the host: UTF-16 in buffers of 256 units, zero-terminated.
#pragma once

#include <string>

#include "PrSDKTypes.h"

/// Puts the temporary-items folder in front of the file name that destination holds, and sets g_fpath to the full path.
/// destination has 256 units; name is the same file name in UTF-8. Returns 0, the status of the folder's look-up when
/// there is none, or -1 when the full path would take 255 units or more: destination then holds the folder alone.
/// [main-thread]
csSDK_int32 setDestinationPath(prUTF16Char* destination, const std::string& name);

/// Whether the file at the path can be reached.
bool fileExists(const prUTF16Char* path);

/// The number of units before the zero; 0 for null.
csSDK_int32 prUTF16CharLength(const prUTF16Char* string);

/// Copies the source with its zero. destination must have room for it. Does nothing when either is null.
void prUTF16CharCopy(prUTF16Char* destination, const prUTF16Char* source);

/// Converts text with one 32-bit character an element. Writes at most as many units as the source has characters, and
/// a zero at the index of that count: destination needs one unit more than the source has characters.
void copyConvertStringLiteralIntoUTF16(const wchar_t* source, prUTF16Char* destination);

/// Copy and append whole strings. The destination must have room; size is not used.
void safeStrCpy(char* destination, size_t size, const char* source);
void safeWcscat(wchar_t* destination, size_t size, const wchar_t* source);
