// Internal interface of the library frame.
#pragma once

#include "level.h"
#include "zvptypes.h"

namespace zvp::ZVP_LEVEL::frame {

// 1 when the feature mask has both bits 0x10 and 0x20, else 0.
int jumpIndexFor(Zvp64u features);

// The value the load-time initialiser stored.
int mergedIndex();

}  // namespace zvp::ZVP_LEVEL::frame
