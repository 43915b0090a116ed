// The state that the export workflow, the windows and the service client share. It lives for the process: every
// string is empty and every pointer null until an export sets it, and cleanup() empties the strings again.
//
// All strings hold UTF-8. Everything is written on the main thread. While an upload runs, its background thread reads
// g_prj, g_fld, g_fpath, g_title, g_desc, g_tags and g_pUpdFunc, and the main thread leaves them alone.
#pragma once

#include <string>
#include <vector>

class OrvaneUI;

/// Subdomain, user name and password of the user who is logged in. Written by SetLoggedIn.
extern std::string g_sd;
extern std::string g_un;
extern std::string g_pw;

/// The stage of the export: "start", "upload" (logged in), "doUpload" (settings confirmed) or empty.
extern std::string g_step;

/// The service has let this user in: sets g_sd, g_un and g_pw, and g_step to "upload". [main-thread]
void SetLoggedIn(const std::string& subdomain, const std::string& username, const std::string& password);

/// Ids of the chosen project and folder; "0" while nothing is chosen.
extern std::string g_prj;
extern std::string g_fld;

/// Full path of the temporary export file.
extern std::string g_fpath;

/// What the reviewers see of the upload.
extern std::string g_title;
extern std::string g_desc;
extern std::vector<std::string> g_tags;

/// Progress hook: (bytes to send, bytes sent). Null before the first export. [upload-queue]
extern void (*g_pUpdFunc)(double total, double now);

/// Completion hook: the link of the uploaded file. [main-thread] [export-open]
extern void (*g_pCompleteFunc)(std::string link);

/// Clean-up hook, which ends an export: once for each. [main-thread] [export-open]
extern void (*g_pCleanupFunc)();

/// Failure hook: something was thrown in the plug-in's own code, with this message. Ends the export. [any-thread]
extern void (*g_pFailureFunc)(const std::string& message);

/// The facade of the running export, or null before the first one. Not reset when the export ends.
extern OrvaneUI* simUiPtr;
