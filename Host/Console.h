// The program's lines for scripts and for the person at the terminal.
#pragma once

#include <string>
#include <vector>

#include "ExitStatus.h"
#include "HostSession.h"
#include "Options.h"

namespace orvane_host {

/// Prints "orvane-host: TEXT" to the standard output at once; line ends within the text are written as \n.
void Say(const std::string& text);

/// The same to the standard error.
void Complain(const std::string& text);

/// The texts of the lines that tell of a file and of an event.
std::string Describe(const RenderedFile& file);
std::string Describe(const ErrorEvent& event);

/// Opens the sequence that the options want. Complains and returns nothing when its film cannot be read.
std::optional<Sequence> OpenSequence(const Options& options);

/// Loads and starts the plug-ins that the options want. Says what was loaded, complains of what was not. Returns the
/// indexes of those that started. Catches here what the windows' sources cannot catch.
std::vector<size_t> LoadPlugins(HostSession& session, const Options& options);

}  // namespace orvane_host
