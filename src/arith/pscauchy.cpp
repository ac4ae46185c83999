// Cauchy weighting in place: x := (C^2 / 2) * ln(1 + (x / C)^2), the
// robust-estimation loss that grows like x^2/2 near zero and logarithmically
// for large |x|.
#include <cmath>

#include "check.h"
#include "p8/frame.h"

namespace zvp::p8 {

ZvpStatus zvpsCauchy_32f_I(Zvp32f* v, int len, Zvp32f param) {
    ZVP_CHECK_PTRS(v);
    ZVP_CHECK_LENS(len);
    if (!(param > 0.0f)) return zvpStsCauchyParamErr;
    const double c = param, half = 0.5 * c * c;
    for (int i = 0; i < len; ++i) {
        const double t = double(v[i]) / c;
        v[i] = float(half * std::log1p(t * t));
    }
    return zvpStsNoErr;
}

}  // namespace zvp::p8
