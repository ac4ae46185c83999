/* zvpSP: stateless FIR filters over a caller-owned doubled delay line. */
#ifndef ZVPS_FIRDIRECT_H
#define ZVPS_FIRDIRECT_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_FIRDIRECT_H */
