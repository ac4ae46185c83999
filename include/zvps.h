/* zvpSP: one-dimensional signal-processing primitives.
 *
 * The one header a program includes. Every function returns a ZvpStatus
 * (apart from the allocators and the version query), checks its arguments in
 * a fixed order (null pointers -8, lengths below 1 -6, its own values, then
 * the identity tag of a state record -17) and writes nothing when it fails.
 * The declarations come in one header per family, each opening with what
 * that family's arguments mean and the statuses it returns. C99 and C++
 * clean. */
#ifndef ZVPS_H
#define ZVPS_H

#include "zvptypes.h"

#include "zvps_frame.h"
#include "zvps_copy.h"
#include "zvps_addsub.h"
#include "zvps_muldiv.h"
#include "zvps_powers.h"
#include "zvps_logic.h"
#include "zvps_convert.h"
#include "zvps_threshold.h"
#include "zvps_cplx.h"
#include "zvps_companding.h"
#include "zvps_stats.h"
#include "zvps_norms.h"
#include "zvps_extremes.h"
#include "zvps_window.h"
#include "zvps_generate.h"
#include "zvps_random.h"
#include "zvps_fft.h"
#include "zvps_fftreal.h"
#include "zvps_dft.h"
#include "zvps_dct.h"
#include "zvps_goertzel.h"
#include "zvps_hilbert.h"
#include "zvps_conv.h"
#include "zvps_corr.h"
#include "zvps_fir.h"
#include "zvps_firdirect.h"
#include "zvps_firsr.h"

#endif /* ZVPS_H */
