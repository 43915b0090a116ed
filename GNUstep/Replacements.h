// The methods of GNUstep's classes that are replaced, one function for each file of replacements. Each is called once.
#pragma once

void InstallAlertPanel();
void InstallFontFallback();
void InstallFontSubstitution();
void InstallModalLoop();
void InstallNibLoading();
void InstallPopUpItems();
void InstallReturnKey();
void InstallRightToLeft();
void InstallSupplementaryGlyphs();
void InstallTemplateImages();
void InstallWindowDisplay();
void InstallWorkspaceOpen();
