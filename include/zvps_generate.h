/* zvpSP deterministic signals: ramps, slopes, triangles, tones and the Jaehne signal. */
#ifndef ZVPS_GENERATE_H
#define ZVPS_GENERATE_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_GENERATE_H */
