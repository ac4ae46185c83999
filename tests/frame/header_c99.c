/* The public headers as a C99 program sees them. */
#include "zvps.h"
#include "zvpcore.h"

#include <stdio.h>
#include <string.h>

int main(void) {
    const ZvpLibraryVersion* v = zvpsGetLibVersion();
    Zvp32f a[4] = {1, 2, 3, 4}, b[4] = {0, 0, 0, 0};
    Zvp16sc z = {1, -1};
    Zvp16sc zs[2];
    ZvpStatus st = zvpsCopy_32f(a, b, 4);
    if (st != zvpStsNoErr || memcmp(a, b, sizeof a) != 0) return 1;
    if (zvpsSet_16sc(z, zs, 2) != zvpStsNoErr || zs[1].re != 1 || zs[1].im != -1) return 2;
    if (v == NULL || v->major != 8 || strcmp(v->targetCpu, "p8") != 0) return 3;
    printf("%s %s\n", v->name, zvpGetStatusString(zvpsZero_32f(NULL, 1)));
    return 0;
}
