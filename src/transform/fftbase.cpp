// The quarter-wave sine tables of the FFT records (rounding rules in
// fftbase.h).
#include "fftbase.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "lane.h"

namespace zvp::ZVP_LEVEL::fft {
namespace {

// sin(2 pi k / 1024), k = 0..256, correctly rounded to single precision.
constexpr float kFixSin32f[257] = {
    0x0p+0f, 0x1.921f1p-8f, 0x1.921d2p-7f, 0x1.2d936cp-6f,
    0x1.92156p-6f, 0x1.f69374p-6f, 0x1.2d8658p-5f, 0x1.5fc00ep-5f,
    0x1.91f66p-5f, 0x1.c428d2p-5f, 0x1.f656e8p-5f, 0x1.144014p-4f,
    0x1.2d520ap-4f, 0x1.466118p-4f, 0x1.5f6dp-4f, 0x1.787586p-4f,
    0x1.917a6cp-4f, 0x1.aa7b72p-4f, 0x1.c3785cp-4f, 0x1.dc70ecp-4f,
    0x1.f564e6p-4f, 0x1.072a04p-3f, 0x1.139f0cp-3f, 0x1.20116ep-3f,
    0x1.2c8106p-3f, 0x1.38edbcp-3f, 0x1.45576cp-3f, 0x1.51bdf8p-3f,
    0x1.5e2144p-3f, 0x1.6a813p-3f, 0x1.76dd9ep-3f, 0x1.83366ep-3f,
    0x1.8f8b84p-3f, 0x1.9bdccp-3f, 0x1.a82a02p-3f, 0x1.b4732ep-3f,
    0x1.c0b826p-3f, 0x1.ccf8ccp-3f, 0x1.d934fep-3f, 0x1.e56ca2p-3f,
    0x1.f19f98p-3f, 0x1.fdcdc2p-3f, 0x1.04fb8p-2f, 0x1.0b0d9cp-2f,
    0x1.111d26p-2f, 0x1.172a0ep-2f, 0x1.1d3444p-2f, 0x1.233bbap-2f,
    0x1.294062p-2f, 0x1.2f422ep-2f, 0x1.35410cp-2f, 0x1.3b3cfp-2f,
    0x1.4135cap-2f, 0x1.472b8ap-2f, 0x1.4d1e24p-2f, 0x1.530d88p-2f,
    0x1.58f9a8p-2f, 0x1.5ee274p-2f, 0x1.64c7dep-2f, 0x1.6aa9d8p-2f,
    0x1.708854p-2f, 0x1.76634p-2f, 0x1.7c3a94p-2f, 0x1.820e3cp-2f,
    0x1.87de2ap-2f, 0x1.8daa52p-2f, 0x1.9372a6p-2f, 0x1.993716p-2f,
    0x1.9ef794p-2f, 0x1.a4b412p-2f, 0x1.aa6c82p-2f, 0x1.b020d6p-2f,
    0x1.b5d1p-2f, 0x1.bb7cf2p-2f, 0x1.c1249ep-2f, 0x1.c6c7f4p-2f,
    0x1.cc66eap-2f, 0x1.d2016ep-2f, 0x1.d79776p-2f, 0x1.dd28f2p-2f,
    0x1.e2b5d4p-2f, 0x1.e83e0ep-2f, 0x1.edc196p-2f, 0x1.f3405ap-2f,
    0x1.f8ba4ep-2f, 0x1.fe2f64p-2f, 0x1.01cfc8p-1f, 0x1.048562p-1f,
    0x1.07387ap-1f, 0x1.09e908p-1f, 0x1.0c9704p-1f, 0x1.0f426cp-1f,
    0x1.11eb36p-1f, 0x1.14915ap-1f, 0x1.1734d6p-1f, 0x1.19d5ap-1f,
    0x1.1c73b4p-1f, 0x1.1f0f08p-1f, 0x1.21a79ap-1f, 0x1.243d6p-1f,
    0x1.26d054p-1f, 0x1.296072p-1f, 0x1.2bedb2p-1f, 0x1.2e780ep-1f,
    0x1.30ff8p-1f, 0x1.3384p-1f, 0x1.36058cp-1f, 0x1.388418p-1f,
    0x1.3affa2p-1f, 0x1.3d7824p-1f, 0x1.3fed96p-1f, 0x1.425ff2p-1f,
    0x1.44cf32p-1f, 0x1.473b52p-1f, 0x1.49a44ap-1f, 0x1.4c0a14p-1f,
    0x1.4e6cacp-1f, 0x1.50cc0ap-1f, 0x1.53282ap-1f, 0x1.558104p-1f,
    0x1.57d694p-1f, 0x1.5a28d2p-1f, 0x1.5c77bcp-1f, 0x1.5ec34ap-1f,
    0x1.610b76p-1f, 0x1.63503ap-1f, 0x1.659192p-1f, 0x1.67cf78p-1f,
    0x1.6a09e6p-1f, 0x1.6c40d8p-1f, 0x1.6e7446p-1f, 0x1.70a42cp-1f,
    0x1.72d084p-1f, 0x1.74f948p-1f, 0x1.771e76p-1f, 0x1.794006p-1f,
    0x1.7b5df2p-1f, 0x1.7d7836p-1f, 0x1.7f8ecep-1f, 0x1.81a1b4p-1f,
    0x1.83b0ep-1f, 0x1.85bc52p-1f, 0x1.87c4p-1f, 0x1.89c7eap-1f,
    0x1.8bc806p-1f, 0x1.8dc454p-1f, 0x1.8fbccap-1f, 0x1.91b166p-1f,
    0x1.93a224p-1f, 0x1.958efep-1f, 0x1.9777fp-1f, 0x1.995cf2p-1f,
    0x1.9b3e04p-1f, 0x1.9d1b2p-1f, 0x1.9ef43ep-1f, 0x1.a0c95ep-1f,
    0x1.a29a7ap-1f, 0x1.a4678cp-1f, 0x1.a63092p-1f, 0x1.a7f586p-1f,
    0x1.a9b662p-1f, 0x1.ab7326p-1f, 0x1.ad2bcap-1f, 0x1.aee04cp-1f,
    0x1.b090a6p-1f, 0x1.b23cd4p-1f, 0x1.b3e4d4p-1f, 0x1.b588ap-1f,
    0x1.b72834p-1f, 0x1.b8c38ep-1f, 0x1.ba5aa6p-1f, 0x1.bbed7cp-1f,
    0x1.bd7c0ap-1f, 0x1.bf064ep-1f, 0x1.c08c42p-1f, 0x1.c20de4p-1f,
    0x1.c38b3p-1f, 0x1.c5042p-1f, 0x1.c678b4p-1f, 0x1.c7e8e6p-1f,
    0x1.c954b2p-1f, 0x1.cabc16p-1f, 0x1.cc1f1p-1f, 0x1.cd7d98p-1f,
    0x1.ced7bp-1f, 0x1.d02d5p-1f, 0x1.d17e78p-1f, 0x1.d2cb22p-1f,
    0x1.d4134ep-1f, 0x1.d556f6p-1f, 0x1.d69618p-1f, 0x1.d7d0bp-1f,
    0x1.d906bcp-1f, 0x1.da383ap-1f, 0x1.db6526p-1f, 0x1.dc8d7cp-1f,
    0x1.ddb13cp-1f, 0x1.ded06p-1f, 0x1.dfeae6p-1f, 0x1.e100ccp-1f,
    0x1.e2121p-1f, 0x1.e31eaep-1f, 0x1.e426a4p-1f, 0x1.e529fp-1f,
    0x1.e6288ep-1f, 0x1.e7227ep-1f, 0x1.e817bap-1f, 0x1.e90844p-1f,
    0x1.e9f416p-1f, 0x1.eadb2ep-1f, 0x1.ebbd8cp-1f, 0x1.ec9b2ep-1f,
    0x1.ed740ep-1f, 0x1.ee482ep-1f, 0x1.ef178ap-1f, 0x1.efe22p-1f,
    0x1.f0a7fp-1f, 0x1.f168f6p-1f, 0x1.f2253p-1f, 0x1.f2dc9cp-1f,
    0x1.f38f3ap-1f, 0x1.f43d08p-1f, 0x1.f4e604p-1f, 0x1.f58a2cp-1f,
    0x1.f6297cp-1f, 0x1.f6c3f8p-1f, 0x1.f7599ap-1f, 0x1.f7ea62p-1f,
    0x1.f8765p-1f, 0x1.f8fd6p-1f, 0x1.f97f92p-1f, 0x1.f9fce6p-1f,
    0x1.fa7558p-1f, 0x1.fae8e8p-1f, 0x1.fb5798p-1f, 0x1.fbc162p-1f,
    0x1.fc2648p-1f, 0x1.fc8646p-1f, 0x1.fce16p-1f, 0x1.fd3792p-1f,
    0x1.fd88dap-1f, 0x1.fdd53ap-1f, 0x1.fe1cbp-1f, 0x1.fe5f3ap-1f,
    0x1.fe9cdap-1f, 0x1.fed58ep-1f, 0x1.ff0956p-1f, 0x1.ff383p-1f,
    0x1.ff621ep-1f, 0x1.ff871ep-1f, 0x1.ffa72ep-1f, 0x1.ffc252p-1f,
    0x1.ffd886p-1f, 0x1.ffe9ccp-1f, 0x1.fff622p-1f, 0x1.fffd88p-1f,
    0x1p+0f,
};
// The same in double precision.
constexpr double kFixSin64f[257] = {
    0x0p+0, 0x1.921f0fe670071p-8, 0x1.921d1fcdec784p-7,
    0x1.2d936bbe30efdp-6, 0x1.92155f7a3667ep-6, 0x1.f693731d1cf01p-6,
    0x1.2d865759455cdp-5, 0x1.5fc00d290cd43p-5, 0x1.91f65f10dd814p-5,
    0x1.c428d12c0d7e3p-5, 0x1.f656e79f820ep-5, 0x1.1440134d709b3p-4,
    0x1.2d52092ce19f6p-4, 0x1.4661179272096p-4, 0x1.5f6d00a9aa419p-4,
    0x1.787586a5d5b21p-4, 0x1.917a6bc29b42cp-4, 0x1.aa7b724495c03p-4,
    0x1.c3785c79ec2d5p-4, 0x1.dc70ecbae9fc9p-4, 0x1.f564e56a9730ep-4,
    0x1.072a047ba831dp-3, 0x1.139f0cedaf577p-3, 0x1.20116d4ec7bcfp-3,
    0x1.2c8106e8e613ap-3, 0x1.38edbb0cd8d14p-3, 0x1.45576b1293e5ap-3,
    0x1.51bdf8597c5f2p-3, 0x1.5e214448b3fc6p-3, 0x1.6a81304f64ab2p-3,
    0x1.76dd9de50bf31p-3, 0x1.83366e89c64c6p-3, 0x1.8f8b83c69a60bp-3,
    0x1.9bdcbf2dc4366p-3, 0x1.a82a025b00451p-3, 0x1.b4732ef3d6722p-3,
    0x1.c0b826a7e4f63p-3, 0x1.ccf8cb312b286p-3, 0x1.d934fe5454311p-3,
    0x1.e56ca1e101a1bp-3, 0x1.f19f97b215f1bp-3, 0x1.fdcdc1adfedf9p-3,
    0x1.04fb80e37fdaep-2, 0x1.0b0d9cfdbdb9p-2, 0x1.111d262b1f677p-2,
    0x1.172a0d7765177p-2, 0x1.1d3443f4cdb3ep-2, 0x1.233bbabc3bb71p-2,
    0x1.294062ed59f06p-2, 0x1.2f422daec0387p-2, 0x1.35410c2e18152p-2,
    0x1.3b3cefa0414b7p-2, 0x1.4135c94176601p-2, 0x1.472b8a5571054p-2,
    0x1.4d1e24278e76ap-2, 0x1.530d880af3c24p-2, 0x1.58f9a75ab1fddp-2,
    0x1.5ee27379ea693p-2, 0x1.64c7ddd3f27c6p-2, 0x1.6aa9d7dc77e17p-2,
    0x1.7088530fa459fp-2, 0x1.766340f2418f6p-2, 0x1.7c3a9311dcce7p-2,
    0x1.820e3b04eaac4p-2, 0x1.87de2a6aea963p-2, 0x1.8daa52ec8a4bp-2,
    0x1.9372a63bc93d7p-2, 0x1.993716141bdffp-2, 0x1.9ef7943a8ed8ap-2,
    0x1.a4b4127dea1e5p-2, 0x1.aa6c82b6d3fcap-2, 0x1.b020d6c7f4009p-2,
    0x1.b5d1009e15ccp-2, 0x1.bb7cf2304bd01p-2, 0x1.c1249d8011ee7p-2,
    0x1.c6c7f4997000bp-2, 0x1.cc66e9931c45ep-2, 0x1.d2016e8e9db5bp-2,
    0x1.d79775b86e389p-2, 0x1.dd28f1481cc58p-2, 0x1.e2b5d3806f63bp-2,
    0x1.e83e0eaf85114p-2, 0x1.edc1952ef78d6p-2, 0x1.f3405963fd067p-2,
    0x1.f8ba4dbf89abap-2, 0x1.fe2f64be7121p-2, 0x1.01cfc874c3eb7p-1,
    0x1.0485626ae221ap-1, 0x1.073879922ffeep-1, 0x1.09e907417c5e1p-1,
    0x1.0c9704d5d898fp-1, 0x1.0f426bb2a8e7ep-1, 0x1.11eb3541b4b23p-1,
    0x1.14915af336cebp-1, 0x1.1734d63dedb49p-1, 0x1.19d5a09f2b9b8p-1,
    0x1.1c73b39ae68c8p-1, 0x1.1f0f08bbc861bp-1, 0x1.21a799933eb59p-1,
    0x1.243d5fb98ac1fp-1, 0x1.26d054cdd12dfp-1, 0x1.2960727629ca8p-1,
    0x1.2bedb25faf3eap-1, 0x1.2e780e3e8ea17p-1, 0x1.30ff7fce17035p-1,
    0x1.338400d0c8e57p-1, 0x1.36058b10659f3p-1, 0x1.3884185dfeb22p-1,
    0x1.3affa292050b9p-1, 0x1.3d78238c58344p-1, 0x1.3fed9534556d4p-1,
    0x1.425ff178e6bb1p-1, 0x1.44cf325091dd6p-1, 0x1.473b51b987347p-1,
    0x1.49a449b9b0939p-1, 0x1.4c0a145ec0004p-1, 0x1.4e6cabbe3e5e9p-1,
    0x1.50cc09f59a09bp-1, 0x1.5328292a35596p-1, 0x1.5581038975137p-1,
    0x1.57d69348cecap-1, 0x1.5a28d2a5d725p-1, 0x1.5c77bbe65018cp-1,
    0x1.5ec3495837074p-1, 0x1.610b7551d2cdfp-1, 0x1.63503a31c1be9p-1,
    0x1.6591925f0783dp-1, 0x1.67cf78491af1p-1, 0x1.6a09e667f3bcdp-1,
    0x1.6c40d73c18275p-1, 0x1.6e74454eaa8afp-1, 0x1.70a42b3176d7ap-1,
    0x1.72d0837efff96p-1, 0x1.74f948da8d28dp-1, 0x1.771e75f037261p-1,
    0x1.79400574f55e5p-1, 0x1.7b5df226aafafp-1, 0x1.7d7836cc33db2p-1,
    0x1.7f8ece3571771p-1, 0x1.81a1b33b57accp-1, 0x1.83b0e0bff976ep-1,
    0x1.85bc51ae958ccp-1, 0x1.87c400fba2ebfp-1, 0x1.89c7e9a4dd4aap-1,
    0x1.8bc806b151741p-1, 0x1.8dc45331698ccp-1, 0x1.8fbcca3ef940dp-1,
    0x1.91b166fd49da2p-1, 0x1.93a22499263fbp-1, 0x1.958efe48e6dd7p-1,
    0x1.9777ef4c7d742p-1, 0x1.995cf2ed80d22p-1, 0x1.9b3e047f38741p-1,
    0x1.9d1b1f5ea80d5p-1, 0x1.9ef43ef29af94p-1, 0x1.a0c95eabaf937p-1,
    0x1.a29a7a0462782p-1, 0x1.a4678c8119ac8p-1, 0x1.a63091b02fae2p-1,
    0x1.a7f58529fe69dp-1, 0x1.a9b66290ea1a3p-1, 0x1.ab7325916c0d4p-1,
    0x1.ad2bc9e21d511p-1, 0x1.aee04b43c1474p-1, 0x1.b090a581502p-1,
    0x1.b23cd470013b4p-1, 0x1.b3e4d3ef55712p-1, 0x1.b5889fe921405p-1,
    0x1.b728345196e3ep-1, 0x1.b8c38d27504e9p-1, 0x1.ba5aa673590d2p-1,
    0x1.bbed7c49380eap-1, 0x1.bd7c0ac6f952ap-1, 0x1.bf064e15377ddp-1,
    0x1.c08c426725549p-1, 0x1.c20de3fa971bp-1, 0x1.c38b2f180bdb1p-1,
    0x1.c5042012b6907p-1, 0x1.c678b3488739bp-1, 0x1.c7e8e52233cf3p-1,
    0x1.c954b213411f5p-1, 0x1.cabc169a0b9p-1, 0x1.cc1f0f3fcfc5cp-1,
    0x1.cd7d9898b32f6p-1, 0x1.ced7af43cc773p-1, 0x1.d02d4feb2bd92p-1,
    0x1.d17e7743e35dcp-1, 0x1.d2cb220e0ef9fp-1, 0x1.d4134d14dc93ap-1,
    0x1.d556f52e93eb1p-1, 0x1.d696173c9e68bp-1, 0x1.d7d0b02b8ecf9p-1,
    0x1.d906bcf328d46p-1, 0x1.da383a9668988p-1, 0x1.db6526238a09bp-1,
    0x1.dc8d7cb41026p-1, 0x1.ddb13b6ccc23cp-1, 0x1.ded05f7de47dap-1,
    0x1.dfeae622dbe2bp-1, 0x1.e100cca2980acp-1, 0x1.e212104f686e5p-1,
    0x1.e31eae870ce25p-1, 0x1.e426a4b2bc17ep-1, 0x1.e529f04729ffcp-1,
    0x1.e6288ec48e112p-1, 0x1.e7227db6a9744p-1, 0x1.e817bab4cd10dp-1,
    0x1.e9084361df7f2p-1, 0x1.e9f4156c62ddap-1, 0x1.eadb2e8e7a88ep-1,
    0x1.ebbd8c8df0b74p-1, 0x1.ec9b2d3c3bf84p-1, 0x1.ed740e7684963p-1,
    0x1.ee482e25a9dbcp-1, 0x1.ef178a3e473c2p-1, 0x1.efe220c0b95ecp-1,
    0x1.f0a7efb9230d7p-1, 0x1.f168f53f7205dp-1, 0x1.f2252f7763adap-1,
    0x1.f2dc9c9089a9dp-1, 0x1.f38f3ac64e589p-1, 0x1.f43d085ff92ddp-1,
    0x1.f4e603b0b2f2dp-1, 0x1.f58a2b1789e84p-1, 0x1.f6297cff75cbp-1,
    0x1.f6c3f7df5bbb7p-1, 0x1.f7599a3a12077p-1, 0x1.f7ea629e63d6ep-1,
    0x1.f8764fa714ba9p-1, 0x1.f8fd5ffae41dbp-1, 0x1.f97f924c9099bp-1,
    0x1.f9fce55adb2c8p-1, 0x1.fa7557f08a517p-1, 0x1.fae8e8e46cfbbp-1,
    0x1.fb5797195d741p-1, 0x1.fbc1617e44186p-1, 0x1.fc26470e19fd3p-1,
    0x1.fc8646cfeb721p-1, 0x1.fce15fd6da67bp-1, 0x1.fd37914220b84p-1,
    0x1.fd88da3d12526p-1, 0x1.fdd539ff1f456p-1, 0x1.fe1cafcbd5b09p-1,
    0x1.fe5f3af2e394p-1, 0x1.fe9cdad01883ap-1, 0x1.fed58ecb673c4p-1,
    0x1.ff095658e71adp-1, 0x1.ff3830f8d575cp-1, 0x1.ff621e3796d7ep-1,
    0x1.ff871dadb81dfp-1, 0x1.ffa72effef75dp-1, 0x1.ffc251df1d3f8p-1,
    0x1.ffd886084cd0dp-1, 0x1.ffe9cb44b51a1p-1, 0x1.fff62169b92dbp-1,
    0x1.fffd8858e8a92p-1, 0x1p+0,
};

constexpr long double fact(int n) { return n <= 1 ? 1.0L : n * fact(n - 1); }
// (-1)^(i/2) / i!
constexpr long double coef(int i) { return ((i & 2) ? -1.0L : 1.0L) / fact(i); }

// sin x and cos x for 0 <= x <= pi/4 by their Taylor series. The first
// omitted terms, x^19/19! and x^18/18! (double) or x^21/21! and x^20/20!
// (long double), are below 2^-58 and 2^-67 of the result.
//
// In double, Horner's scheme leaves the result within 2^-52 of sin x or
// cos x: the tail x z P(z) is at most a tenth of x (a third of 1 for the
// cosine), so its few roundings weigh little against the last addition.
// Two angles at a time; any lane type gives the same bits.
template <class D>
typename D::R sinPoly(typename D::R x) {
    constexpr double c[] = {double(coef(17)), double(coef(15)), double(coef(13)), double(coef(11)),
                            double(coef(9)), double(coef(7)), double(coef(5)), double(coef(3))};
    const typename D::R z = D::mul(x, x);
    typename D::R p = D::set1(c[0]);
    for (int i = 1; i < 8; ++i) p = D::add(D::mul(p, z), D::set1(c[i]));
    return D::add(x, D::mul(D::mul(x, z), p));
}
template <class D>
typename D::R cosPoly(typename D::R x) {
    constexpr double c[] = {double(coef(16)), double(coef(14)), double(coef(12)), double(coef(10)),
                            double(coef(8)), double(coef(6)), double(coef(4)), double(coef(2))};
    const typename D::R z = D::mul(x, x);
    typename D::R p = D::set1(c[0]);
    for (int i = 1; i < 8; ++i) p = D::add(D::mul(p, z), D::set1(c[i]));
    return D::add(D::set1(1.0), D::mul(z, p));
}

// In long double the terms from x^9 (x^8 for the cosine) on are below 2^-18
// of the result, so they are summed in double (error 2^-70 of the result);
// the leading terms keep 64-bit significands, and the result is within
// 2^-62 of the function.
long double sinPolyL(long double x) {
    constexpr double c9 = coef(9), c11 = coef(11), c13 = coef(13), c15 = coef(15), c17 = coef(17),
                     c19 = coef(19);
    constexpr long double c3 = coef(3), c5 = coef(5), c7 = coef(7);
    const long double z = x * x;
    const double zd = double(z);
    const double hi = c9 + zd * (c11 + zd * (c13 + zd * (c15 + zd * (c17 + zd * c19))));
    return x + x * z * (c3 + z * (c5 + z * (c7 + z * hi)));
}
long double cosPolyL(long double x) {
    constexpr double c8 = coef(8), c10 = coef(10), c12 = coef(12), c14 = coef(14), c16 = coef(16),
                     c18 = coef(18), c20 = coef(20);
    constexpr long double c2 = coef(2), c4 = coef(4), c6 = coef(6);
    const long double z = x * x;
    const double zd = double(z);
    const double hi = c8 + zd * (c10 + zd * (c12 + zd * (c14 + zd * (c16 + zd * (c18 + zd * c20)))));
    return 1.0L + z * (c2 + z * (c4 + z * (c6 + z * hi)));
}

// v rounded to T when every value within v * eps of it rounds the same way.
template <class T, class V>
bool settle(V v, V eps, T& out) {
    const V d = v * eps;
    const T lo = T(v - d), hi = T(v + d);
    out = lo;
    return lo == hi;
}

// Relative half-width of the window around each polynomial value within
// which rounding is left to the function the rule names: the polynomial's
// error plus the function's, with room to spare. Single results of double
// functions (2^-52 each): 2^-48. Double results of long-double functions
// through the sum formulas (2^-61 and 2^-63): 2^-59.
constexpr double kSingleOfDouble = 0x1p-48;
constexpr long double kDoubleOfLongSum = 0x1p-59L;

// Single precision through double functions of single-precision angles:
// entries k0 .. k0 + count - 1 of b from the angles of j0 + sign (k - k0),
// by the sine or the cosine, in chunks whose angles go through the
// polynomial two at a time.
void singleRun(float* b, std::int64_t count, std::int64_t j0, std::int64_t sign, double step,
               bool cosine) {
    using D = Full<double>;
    static_assert(D::N == 2);
    constexpr int kChunk = 128;
    alignas(16) double x[kChunk], v[kChunk];
    for (std::int64_t k0 = 0; k0 < count; k0 += kChunk) {
        const int cnt = int(std::min<std::int64_t>(kChunk, count - k0));
        for (int i = 0; i < cnt; ++i) x[i] = double(float(double(j0 + sign * (k0 + i)) * step));
        if (cnt & 1) x[cnt] = 0.0;
        for (int i = 0; i < cnt; i += 2)
            D::storea(v + i, cosine ? cosPoly<D>(D::loada(x + i)) : sinPoly<D>(D::loada(x + i)));
        float* o = b + k0;
        for (int i = 0; i < cnt; ++i)
            if (!settle(v[i], kSingleOfDouble, o[i]))
                o[i] = float(cosine ? std::cos(x[i]) : std::sin(x[i]));
    }
}

void singleBase(float* b, int m) {
    const std::int64_t q = std::int64_t(1) << (m - 2);
    const double step = 6.283185307179586 / double(std::int64_t(1) << m);
    singleRun(b, q / 2 + 1, 0, 1, step, false);      // k = 0 .. q/2: sin of angle k
    singleRun(b + q / 2 + 1, q - q / 2 - 1, q - q / 2 - 1, -1, step, true);  // cos of angle q - k
    b[q] = 1.0f;
}

}  // namespace

const float* fixedSin32f() { return kFixSin32f; }
const double* fixedSin64f() { return kFixSin64f; }

void complexBase(float* b, int m) { singleBase(b, m); }

// Angles j = aF + c are split into a coarse part aF and a fine part c < F;
// the sine and cosine of each part come from the long-double polynomials and
// the angle's from their sum formulas. No term cancels in the first octant,
// so the values are within 2^-61 of the functions.
void complexBase(double* b, int m) {
    constexpr int F = 64;
    const std::int64_t n = std::int64_t(1) << m, q = n / 4, h = q / 2;
    const long double step = 6.283185307179586476925286766559L / static_cast<long double>(n);
    long double fs[F], fc[F];
    for (int c = 0; c < F; ++c) {
        const long double x = static_cast<long double>(c) * step;
        fs[c] = sinPolyL(x);
        fc[c] = cosPolyL(x);
    }
    // b[j] = sin(angle j) for j <= h; b[q - j] = cos(angle j) for 0 < j < q - h
    for (std::int64_t a = 0; a <= h; a += F) {
        const long double x = static_cast<long double>(a) * step;
        const long double as = sinPolyL(x), ac = cosPolyL(x);
        const int cEnd = int(std::min<std::int64_t>(F, h + 1 - a));
        for (int c = 0; c < cEnd; ++c) {
            const std::int64_t j = a + c;
            const long double xj = static_cast<long double>(j) * step;
            if (!settle(as * fc[c] + ac * fs[c], kDoubleOfLongSum, b[j])) b[j] = double(sinl(xj));
            if (j > 0 && j < q - h && !settle(ac * fc[c] - as * fs[c], kDoubleOfLongSum, b[q - j]))
                b[q - j] = double(cosl(xj));
        }
    }
    b[q] = 1.0;
}

void realBase(float* b, int m) {
    if (m > 10) return singleBase(b, m);
    const std::int64_t q = std::int64_t(1) << (m - 2);
    for (std::int64_t k = 0; k <= q; ++k) b[k] = kFixSin32f[k << (10 - m)];
}

void realBase(double* b, int m) {
    const std::int64_t q = std::int64_t(1) << (m - 2);
    const double step = 6.283185307179586 / double(std::int64_t(1) << m);
    for (std::int64_t k = 0; k <= q / 2; ++k) b[k] = std::sin(double(k) * step);
    for (std::int64_t k = q / 2 + 1; k < q; ++k) b[k] = std::cos(double(q - k) * step);
    b[q] = 1.0;
}

}  // namespace zvp::ZVP_LEVEL::fft
