// The methods of GNUstep's classes that are replaced, one function for each file of replacements. Each is called once.
#pragma once

void InstallAccessibilityLabel();
void InstallAlertPanel();
void InstallFontFallback();
void InstallFontSubstitution();
void InstallModalLoop();
void InstallNibLoading();
void InstallPopUpAction();
void InstallPopUpItems();
void InstallPopUpKeys();
void InstallReturnKey();
void InstallRightToLeft();
void InstallSupplementaryGlyphs();
void InstallTemplateImages();
void InstallTextTruncation();
void InstallWindowDisplay();
void InstallWorkspaceOpen();
