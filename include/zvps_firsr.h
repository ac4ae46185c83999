/* zvpSP: FIRSR filters: immutable taps specification, explicit history. */
#ifndef ZVPS_FIRSR_H
#define ZVPS_FIRSR_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_FIRSR_H */
