/* zvpSP: FIR filters with a state record: single-rate, stream forms. */
#ifndef ZVPS_FIR_H
#define ZVPS_FIR_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_FIR_H */
