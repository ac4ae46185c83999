// The processor level this translation unit is compiled for. Kernels, the
// lane layer and every header they share live in namespace zvp::ZVP_LEVEL, so
// the same sources can be compiled once per level without two levels' inline
// functions meeting at link time. The build of another level defines
// ZVP_LEVEL (and its compiler flags) before including anything.
#pragma once

#ifndef ZVP_LEVEL
#define ZVP_LEVEL p8
#endif
