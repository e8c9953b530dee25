// How many processors the system lets this process run on at once: the
// default number of threads of the work that is shared out.
#pragma once

#include <cstdint>

// At least 1.
int32_t SysCoreCount();
