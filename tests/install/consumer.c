/* A program built against the installed library only. */
#include <zvps.h>
#include <stdio.h>

int main(void) {
    Zvp32f v[8];
    if (zvpsSet_32f(2.5f, v, 8) != zvpStsNoErr || v[7] != 2.5f) return 1;
    printf("%s\n", zvpsGetLibVersion()->name);
    return 0;
}
