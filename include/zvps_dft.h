/* zvpSP discrete Fourier transform of any length. */
#ifndef ZVPS_DFT_H
#define ZVPS_DFT_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_DFT_H */
