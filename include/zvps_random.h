/* zvpSP random generators: uniform and Gaussian. */
#ifndef ZVPS_RANDOM_H
#define ZVPS_RANDOM_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_RANDOM_H */
