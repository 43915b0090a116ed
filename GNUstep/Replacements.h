// The methods of GNUstep's classes that are replaced, one function for each file of replacements. Each is called once.
#pragma once

void InstallFontFallback();
void InstallModalLoop();
void InstallNibLoading();
void InstallTemplateImages();
void InstallWindowDisplay();
void InstallWorkspaceOpen();
