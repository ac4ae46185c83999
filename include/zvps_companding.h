/* zvpSP companding: A-law and mu-law codes to and from linear samples. */
#ifndef ZVPS_COMPANDING_H
#define ZVPS_COMPANDING_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_COMPANDING_H */
