// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

// Plain names among them, as in MacTypes.h.
enum { paramErr = -50, dskFulErr = -34, nsvErr = -35, ioErr = -36, bdNamErr = -37, eofErr = -39, fnfErr = -43, wPrErr = -44, dupFNErr = -48, opWrErr = -49, dirNFErr = -120, memFullErr = -108, userCanceledErr = -128 };
