/// Gives scrollers a knob and a groove and no arrows. Call it once, when there is an application. Main thread.
void OHostInstallScrollerParts();
