// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

// Macros of plain names, as older SDKs have them: a function of ours with such a name would not compile there.
#define check(assertion) ((void)(assertion))
#define check_noerr(status) ((void)(status))
#define verify(assertion) ((void)(assertion))
#define verify_noerr(status) ((void)(status))
#define require(assertion, label) do { if (!(assertion)) goto label; } while (0)
#define require_noerr(status, label) do { if ((status) != 0) goto label; } while (0)
