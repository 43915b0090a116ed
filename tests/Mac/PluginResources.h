// The plug-in's resources for tests that link its objects.
#pragma once

/// Makes the built bundle known, so that it is found by its identifier. Its code is not loaded.
void UsePluginResources();
