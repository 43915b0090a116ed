// Our own declarations of the interfaces in use, from public knowledge; see README.md in AppleSDK/.
#pragma once

#include <AssertMacros.h>
#include <CoreFoundation/CoreFoundation.h>

#include <CarbonCore/Components.h>
#include <CarbonCore/Files.h>
#include <CarbonCore/Finder.h>
#include <CarbonCore/Folders.h>
#include <CarbonCore/MacErrors.h>
#include <CarbonCore/OSUtils.h>
#include <CarbonCore/TextCommon.h>
#include <CarbonCore/Timer.h>
