// Numbers of the library's resources.
#pragma once

#define IDR_OBJECT_MODEL 1
#define IDR_ENUMERATIONS 2
