/* zvpSP cross- and auto-correlation. */
#ifndef ZVPS_CORR_H
#define ZVPS_CORR_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_CORR_H */
