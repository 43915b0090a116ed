// What the plug-in knows of its running export beyond the workflow's variables: whether it is open, whether its upload
// runs, whether anything of it still does, and how many exports have failed in the plug-in's own code.
#pragma once

namespace ExportLifetime {

/// An export is open from its start until its clean-up. [main-thread]
void Open();
void Close();
bool IsOpen();

/// An open export is left over when nothing of it runs any longer, as after a refused upload, whose window stays on the
/// screen. Only then may somebody else end it. [main-thread]
void MarkLeftOver();
bool IsLeftOver();

/// An upload runs from the opening of its window until the service has answered. [main-thread]
void SetUploadIsRunning(bool running);
bool UploadIsRunning();

/// Counts the exports that ended because something was thrown. [main-thread]
void CountFailure();
unsigned Failures();

}  // namespace ExportLifetime
