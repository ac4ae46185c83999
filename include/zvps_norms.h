/* zvpSP norms and dot products: Norm, NormDiff, DotProd. */
#ifndef ZVPS_NORMS_H
#define ZVPS_NORMS_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_NORMS_H */
