/* zvpSP single-frequency analysis: Goertzel. */
#ifndef ZVPS_GOERTZEL_H
#define ZVPS_GOERTZEL_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_GOERTZEL_H */
