// The methods of GNUstep's classes that are replaced, one function for each file of replacements. Each is called once.
#pragma once

void InstallAccessibilityLabel();
void InstallAlertPanel();
void InstallFontFallback();
void InstallJsonReader();
void InstallModalLoop();
void InstallNibLoading();
void InstallPopUpButton();
void InstallReturnKey();
void InstallTemplateImages();
void InstallTextTruncation();
void InstallWindowDisplay();
void InstallWorkspaceOpen();
