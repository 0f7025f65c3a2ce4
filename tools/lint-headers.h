// The headers that most sources have in common, parsed once for all of lint.
#include <algorithm>
#include <array>
#include <comdef.h>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <mapix.h>
#include <memory>
#include <ole2.h>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>
#include <windows.h>
