// What the plug-in knows of its running export beyond the workflow's variables: whether it is open, whether its upload
// runs, and how many exports have failed in the plug-in's own code.
#pragma once

namespace ExportLifetime {

/// An export is open from its start until its clean-up. [main-thread]
void Open();
void Close();
bool IsOpen();

/// An upload runs from the opening of its window until the service has answered. [main-thread]
void SetUploadIsRunning(bool running);
bool UploadIsRunning();

/// Counts the exports that ended because something was thrown. [main-thread]
void CountFailure();
unsigned Failures();

}  // namespace ExportLifetime
