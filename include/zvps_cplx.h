/* zvpSP complex-vector helpers: Magnitude, Phase, polar forms, power spectrum, parts, conjugates. */
#ifndef ZVPS_CPLX_H
#define ZVPS_CPLX_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_CPLX_H */
