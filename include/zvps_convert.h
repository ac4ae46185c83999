/* zvpSP type conversion: Convert, JoinScaled, SplitScaled. */
#ifndef ZVPS_CONVERT_H
#define ZVPS_CONVERT_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_CONVERT_H */
