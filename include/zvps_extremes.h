/* zvpSP minimum and maximum search: Max, Min, their Abs, Indx, Every and Order forms, MinMax, CountInRange, ZeroCrossing. */
#ifndef ZVPS_EXTREMES_H
#define ZVPS_EXTREMES_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_EXTREMES_H */
