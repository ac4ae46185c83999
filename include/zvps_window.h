/* zvpSP window functions: Bartlett, Hann, Hamming, Blackman, Kaiser. */
#ifndef ZVPS_WINDOW_H
#define ZVPS_WINDOW_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_WINDOW_H */
