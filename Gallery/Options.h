#pragma once

#include <optional>

/// Reads the command line. Returns nothing when the gallery is to open, and otherwise the exit status of the program,
/// which has told what there is to tell: 0 after --help, 2 for what it has no use for.
std::optional<int> ReadOptions(int argc, char** argv);
