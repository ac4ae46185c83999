/* zvpSP discrete cosine transform. */
#ifndef ZVPS_DCT_H
#define ZVPS_DCT_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_DCT_H */
