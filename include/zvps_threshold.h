/* zvpSP thresholding: Threshold and its LT, GT, Abs, Val and Inv forms. */
#ifndef ZVPS_THRESHOLD_H
#define ZVPS_THRESHOLD_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_THRESHOLD_H */
