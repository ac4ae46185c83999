// The public headers as a C++ program sees them.
#include "zvps.h"
#include "zvpcore.h"

#include <cstdio>

static_assert(sizeof(Zvp16sc) == 4 && sizeof(Zvp32fc) == 8 && sizeof(Zvp64fc) == 16);
static_assert(sizeof(ZvpStatus) == 4);

int main() {
    Zvp64fc src[3] = {{1, 2}, {3, 4}, {5, 6}}, dst[3] = {};
    if (zvpsFlip_64fc(src, dst, 3) != zvpStsNoErr) return 1;
    if (dst[0].re != 5 || dst[0].im != 6 || dst[2].re != 1) return 2;
    std::printf("%s\n", zvpsGetLibVersion()->versionText);
    return 0;
}
