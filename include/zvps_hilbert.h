/* zvpSP analytic signal: Hilbert transform. */
#ifndef ZVPS_HILBERT_H
#define ZVPS_HILBERT_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_HILBERT_H */
