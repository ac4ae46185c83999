/* zvpSP sums, means and deviations: Sum, Mean, StdDev, MeanStdDev. */
#ifndef ZVPS_STATS_H
#define ZVPS_STATS_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_STATS_H */
