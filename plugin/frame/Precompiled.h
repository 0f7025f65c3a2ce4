// What most sources of the plug-in include, precompiled.
#pragma once

#include <windows.h>

#include <ole2.h>

#include <comdef.h>
#include <mapix.h>

#include <mapiutil.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>
