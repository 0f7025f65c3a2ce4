// The switches of the stand-in, within its library.
#pragma once

#include "standin/outlook/Control.h"

namespace standin::outlook {

/// One for the life of the library. Who takes it hosts the stand-in: the environment has no say from then on.
Control& TheControl();

} // namespace standin::outlook
