// Rows of the companding operations. Every code and every 16-bit sample is
// checked against an independent G.711 coder in tests/convert/companding_test.cpp.
#include "shapes.h"

namespace {

using namespace zvp::test;

#define UN(f) un(#f, zvps##f)

const bool registered = addShapeFamily("companding", [] {
    return std::vector<Row>{UN(ALawToLin_8u16s),  UN(ALawToLin_8u32f),  UN(MuLawToLin_8u16s), UN(MuLawToLin_8u32f),
                            UN(LinToALaw_16s8u),  UN(LinToALaw_32f8u),  UN(LinToMuLaw_16s8u), UN(LinToMuLaw_32f8u),
                            UN(ALawToMuLaw_8u),   UN(MuLawToALaw_8u)};
});

}  // namespace
