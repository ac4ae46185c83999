// Cauchy weighting in place: x := (C^2 / 2) * ln(1 + (x / C)^2), the
// robust-estimation loss that grows like x^2/2 near zero and logarithmically
// for large |x|. The parameter C must be positive (checked after the pointer
// and the length).
#include <cmath>

#include "forms.h"
#include "p8/frame.h"

namespace zvp::p8 {
namespace {

struct Cauchy {
    using type = Zvp32f;
    static ZvpStatus check(Zvp32f param) { return param > 0.0f ? zvpStsNoErr : zvpStsCauchyParamErr; }
    template <class A>
    static ZvpStatus run(A s, Zvp32f* d, std::ptrdiff_t n, Zvp32f param) {
        const double c = param, half = 0.5 * c * c;
        for (std::ptrdiff_t i = 0; i < n; ++i) {
            const double t = double(s.at(i)) / c;
            d[i] = float(half * std::log1p(t * t));
        }
        return zvpStsNoErr;
    }
};

}  // namespace

ZvpStatus zvpsCauchy_32f_I(Zvp32f* v, int len, Zvp32f param) { return form::vI<Cauchy>(v, len, param); }

}  // namespace zvp::p8
