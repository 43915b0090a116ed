// The function tables that the host offers. They exist once in the process.
#pragma once

#include <string>

#include "HostCalls.h"
#include "PrSDKPlugSuites.h"

namespace orvane_host {

/// Names the host that the tables' functions reach; null takes it away. Brings the tables back to what they should be
/// and frees the blocks that an earlier host's plug-ins kept. Main thread.
void SetHostCalls(HostCalls* calls);

/// The tables for the standard parameters of every call. Valid for the life of the process.
piSuitesPtr StandardSuites();

/// The table of a suite, or null for an unknown name or version.
const void* FindSuite(const std::string& name, csSDK_int32 version);

/// Whether the plug-in left the tables as they were.
bool TablesIntact();

/// The number of blocks of AllocateBlock that were not freed.
size_t LiveBlocks();

}  // namespace orvane_host
