/* zvpSP convolution: linear, biased and cyclic. */
#ifndef ZVPS_CONV_H
#define ZVPS_CONV_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_CONV_H */
