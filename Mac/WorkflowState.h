// The state that the export workflow, the windows and the service client share. It lives for the process: every
// string is empty and every pointer null until an export sets it, and cleanup() empties the strings again.
//
// All strings hold UTF-8. Everything is written on the main thread. While an upload runs, its background thread reads
// g_prj, g_fld, g_fpath, g_title, g_desc, g_tags and g_pUpdFunc, and the main thread leaves them alone.
#pragma once

#include <string>
#include <vector>

class OrvaneUI;

/// Subdomain, user name and password of the user who is logged in. Written at login.
extern std::string g_sd;
extern std::string g_un;
extern std::string g_pw;

/// The stage of the export: "start", "upload" (logged in), "doUpload" (settings confirmed) or empty.
extern std::string g_step;

/// Ids of the chosen project and folder; "0" while nothing is chosen.
extern std::string g_prj;
extern std::string g_fld;

/// Full path of the temporary export file.
extern std::string g_fpath;

/// What the reviewers see of the upload.
extern std::string g_title;
extern std::string g_desc;
extern std::vector<std::string> g_tags;

/// Progress hook: (bytes to send, bytes sent). Called on the upload's background thread; null before the first export.
extern void (*g_pUpdFunc)(double total, double now);

/// Completion hook: the link of the uploaded file. Called on the main thread.
extern void (*g_pCompleteFunc)(std::string link);

/// Clean-up hook, which ends an export. Called on the main thread, once for an export.
extern void (*g_pCleanupFunc)();

/// The facade of the running export, or null before the first one. Not reset when the export ends.
extern OrvaneUI* simUiPtr;
