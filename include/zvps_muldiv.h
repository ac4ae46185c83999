/* zvpSP multiplication and division: Mul, MulC, Div, DivC, DivCRev,
 * Div_Round, AddProduct.
 *
 * Arguments: the source vectors (or a vector and the constant val), the
 * destination, the length in elements, then the rounding mode of Div_Round
 * and last the scale factor of the Sfs forms. In-place forms (_I) take the
 * other operand first and the source-and-destination vector after it; for
 * Div the first source is the divisor. Checks, the first failure returned with
 * nothing written: a null pointer gives zvpStsNullPtrErr (-8), a length below
 * 1 zvpStsSizeErr (-6), then the operation's own values (a zero constant
 * divisor: zvpStsDivByZeroErr, -10; an unknown rounding mode:
 * zvpStsRoundModeNotSupportedErr, -213). A zero element divisor is not an
 * error: the whole result is written and the call returns the warning
 * zvpStsDivByZero (6). */
#ifndef ZVPS_MULDIV_H
#define ZVPS_MULDIV_H

#include "zvptypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Integer forms deliver the exact result R scaled: saturate(R * 2^-scaleFactor),
 * rounded to nearest with ties to even. In-place forms take the source first
 * and the source-and-destination vector second. */

/* Mul: pDst[i] = pSrc1[i] * pSrc2[i]; MulC: pDst[i] = pSrc[i] * val. Forms
 * without a scale factor saturate the product. Mixed forms name the first
 * source's type, then the type of the second source and destination (16u16s,
 * 32f32fc, 32s32sc) or of the destination (8u16u, 16s32f, 16s32s, 32f16s).
 * Mul_Low_32s_Sfs gives the results of Mul_32s_Sfs. MulC_32f16s_Sfs scales the
 * exact product; MulC_Low_32f16s rounds the single-precision product to the
 * nearest integer (ties to even); both saturate to 16s and turn NaN into 0.
 * MulC_64f64s_ISfs scales the exact product of val and each 64s element. */
ZvpStatus zvpsMul_8u_Sfs(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp8u* pDst, int len, int scaleFactor);
ZvpStatus zvpsMul_8u_ISfs(const Zvp8u* pSrc, Zvp8u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMul_8u16u(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp16u* pDst, int len);
ZvpStatus zvpsMul_16s(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len);
ZvpStatus zvpsMul_16s_I(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len);
ZvpStatus zvpsMul_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsMul_16s_ISfs(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMul_16s32f(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp32f* pDst, int len);
ZvpStatus zvpsMul_16s32s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp32s* pDst, int len, int scaleFactor);
ZvpStatus zvpsMul_16u_Sfs(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len, int scaleFactor);
ZvpStatus zvpsMul_16u_ISfs(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMul_16u16s_Sfs(const Zvp16u* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsMul_16u16s_ISfs(const Zvp16u* pSrc, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMul_16sc_Sfs(const Zvp16sc* pSrc1, const Zvp16sc* pSrc2, Zvp16sc* pDst, int len, int scaleFactor);
ZvpStatus zvpsMul_16sc_ISfs(const Zvp16sc* pSrc, Zvp16sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMul_32s_Sfs(const Zvp32s* pSrc1, const Zvp32s* pSrc2, Zvp32s* pDst, int len, int scaleFactor);
ZvpStatus zvpsMul_32s_ISfs(const Zvp32s* pSrc, Zvp32s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMul_Low_32s_Sfs(const Zvp32s* pSrc1, const Zvp32s* pSrc2, Zvp32s* pDst, int len, int scaleFactor);
ZvpStatus zvpsMul_32s32sc_Sfs(const Zvp32s* pSrc1, const Zvp32sc* pSrc2, Zvp32sc* pDst, int len, int scaleFactor);
ZvpStatus zvpsMul_32s32sc_ISfs(const Zvp32s* pSrc, Zvp32sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMul_32sc_Sfs(const Zvp32sc* pSrc1, const Zvp32sc* pSrc2, Zvp32sc* pDst, int len, int scaleFactor);
ZvpStatus zvpsMul_32sc_ISfs(const Zvp32sc* pSrc, Zvp32sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMul_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, Zvp32f* pDst, int len);
ZvpStatus zvpsMul_32f_I(const Zvp32f* pSrc, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsMul_32f32fc(const Zvp32f* pSrc1, const Zvp32fc* pSrc2, Zvp32fc* pDst, int len);
ZvpStatus zvpsMul_32f32fc_I(const Zvp32f* pSrc, Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsMul_32fc(const Zvp32fc* pSrc1, const Zvp32fc* pSrc2, Zvp32fc* pDst, int len);
ZvpStatus zvpsMul_32fc_I(const Zvp32fc* pSrc, Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsMul_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, Zvp64f* pDst, int len);
ZvpStatus zvpsMul_64f_I(const Zvp64f* pSrc, Zvp64f* pSrcDst, int len);
ZvpStatus zvpsMul_64fc(const Zvp64fc* pSrc1, const Zvp64fc* pSrc2, Zvp64fc* pDst, int len);
ZvpStatus zvpsMul_64fc_I(const Zvp64fc* pSrc, Zvp64fc* pSrcDst, int len);
ZvpStatus zvpsMulC_8u_Sfs(const Zvp8u* pSrc, Zvp8u val, Zvp8u* pDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_8u_ISfs(Zvp8u val, Zvp8u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_16s_I(Zvp16s val, Zvp16s* pSrcDst, int len);
ZvpStatus zvpsMulC_16s_Sfs(const Zvp16s* pSrc, Zvp16s val, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_16s_ISfs(Zvp16s val, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_16u_Sfs(const Zvp16u* pSrc, Zvp16u val, Zvp16u* pDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_16u_ISfs(Zvp16u val, Zvp16u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc val, Zvp16sc* pDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_16sc_ISfs(Zvp16sc val, Zvp16sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_32s_Sfs(const Zvp32s* pSrc, Zvp32s val, Zvp32s* pDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_32s_ISfs(Zvp32s val, Zvp32s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_32sc_Sfs(const Zvp32sc* pSrc, Zvp32sc val, Zvp32sc* pDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_32sc_ISfs(Zvp32sc val, Zvp32sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_64s_ISfs(Zvp64s val, Zvp64s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_64f64s_ISfs(Zvp64f val, Zvp64s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_32f(const Zvp32f* pSrc, Zvp32f val, Zvp32f* pDst, int len);
ZvpStatus zvpsMulC_32f_I(Zvp32f val, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsMulC_32f16s_Sfs(const Zvp32f* pSrc, Zvp32f val, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsMulC_Low_32f16s(const Zvp32f* pSrc, Zvp32f val, Zvp16s* pDst, int len);
ZvpStatus zvpsMulC_32fc(const Zvp32fc* pSrc, Zvp32fc val, Zvp32fc* pDst, int len);
ZvpStatus zvpsMulC_32fc_I(Zvp32fc val, Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsMulC_64f(const Zvp64f* pSrc, Zvp64f val, Zvp64f* pDst, int len);
ZvpStatus zvpsMulC_64f_I(Zvp64f val, Zvp64f* pSrcDst, int len);
ZvpStatus zvpsMulC_64fc(const Zvp64fc* pSrc, Zvp64fc val, Zvp64fc* pDst, int len);
ZvpStatus zvpsMulC_64fc_I(Zvp64fc val, Zvp64fc* pSrcDst, int len);

/* Div: pDst[i] = pSrc2[i] / pSrc1[i] (the first source is the divisor; in
 * place, pSrcDst[i] / pSrc[i]). A zero divisor never fails: that element gets
 * 0 for 0/0, otherwise the type's maximum for a positive dividend and its
 * minimum for a negative one (floats: the IEEE quotient), and the call returns
 * zvpStsDivByZero. Div_16u_Sfs with scaleFactor below -31 gives 65535 for every
 * non-zero divisor, even for a zero dividend. Div_32s16s: the divisor is 32s,
 * the dividend and the destination 16s. */
ZvpStatus zvpsDiv_8u_Sfs(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp8u* pDst, int len, int scaleFactor);
ZvpStatus zvpsDiv_8u_ISfs(const Zvp8u* pSrc, Zvp8u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsDiv_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsDiv_16s_ISfs(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsDiv_16u_Sfs(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len, int scaleFactor);
ZvpStatus zvpsDiv_16u_ISfs(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsDiv_16sc_Sfs(const Zvp16sc* pSrc1, const Zvp16sc* pSrc2, Zvp16sc* pDst, int len, int scaleFactor);
ZvpStatus zvpsDiv_16sc_ISfs(const Zvp16sc* pSrc, Zvp16sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsDiv_32s_Sfs(const Zvp32s* pSrc1, const Zvp32s* pSrc2, Zvp32s* pDst, int len, int scaleFactor);
ZvpStatus zvpsDiv_32s_ISfs(const Zvp32s* pSrc, Zvp32s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsDiv_32s16s_Sfs(const Zvp32s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsDiv_32s16s_ISfs(const Zvp32s* pSrc, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsDiv_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, Zvp32f* pDst, int len);
ZvpStatus zvpsDiv_32f_I(const Zvp32f* pSrc, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsDiv_32fc(const Zvp32fc* pSrc1, const Zvp32fc* pSrc2, Zvp32fc* pDst, int len);
ZvpStatus zvpsDiv_32fc_I(const Zvp32fc* pSrc, Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsDiv_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, Zvp64f* pDst, int len);
ZvpStatus zvpsDiv_64f_I(const Zvp64f* pSrc, Zvp64f* pSrcDst, int len);
ZvpStatus zvpsDiv_64fc(const Zvp64fc* pSrc1, const Zvp64fc* pSrc2, Zvp64fc* pDst, int len);
ZvpStatus zvpsDiv_64fc_I(const Zvp64fc* pSrc, Zvp64fc* pSrcDst, int len);

/* DivC: pDst[i] = pSrc[i] / val; a zero val gives zvpStsDivByZeroErr (checked
 * after the pointers and the length). Float forms multiply by the reciprocal
 * of val, computed once. DivCRev: pDst[i] = val / pSrc[i], with the zero
 * divisor rule of Div (16u: rounded to nearest). */
ZvpStatus zvpsDivC_8u_Sfs(const Zvp8u* pSrc, Zvp8u val, Zvp8u* pDst, int len, int scaleFactor);
ZvpStatus zvpsDivC_8u_ISfs(Zvp8u val, Zvp8u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsDivC_16s_Sfs(const Zvp16s* pSrc, Zvp16s val, Zvp16s* pDst, int len, int scaleFactor);
ZvpStatus zvpsDivC_16s_ISfs(Zvp16s val, Zvp16s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsDivC_16u_Sfs(const Zvp16u* pSrc, Zvp16u val, Zvp16u* pDst, int len, int scaleFactor);
ZvpStatus zvpsDivC_16u_ISfs(Zvp16u val, Zvp16u* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsDivC_16sc_Sfs(const Zvp16sc* pSrc, Zvp16sc val, Zvp16sc* pDst, int len, int scaleFactor);
ZvpStatus zvpsDivC_16sc_ISfs(Zvp16sc val, Zvp16sc* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsDivC_64s_ISfs(Zvp64s val, Zvp64s* pSrcDst, int len, int scaleFactor);
ZvpStatus zvpsDivC_32f(const Zvp32f* pSrc, Zvp32f val, Zvp32f* pDst, int len);
ZvpStatus zvpsDivC_32f_I(Zvp32f val, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsDivC_32fc(const Zvp32fc* pSrc, Zvp32fc val, Zvp32fc* pDst, int len);
ZvpStatus zvpsDivC_32fc_I(Zvp32fc val, Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsDivC_64f(const Zvp64f* pSrc, Zvp64f val, Zvp64f* pDst, int len);
ZvpStatus zvpsDivC_64f_I(Zvp64f val, Zvp64f* pSrcDst, int len);
ZvpStatus zvpsDivC_64fc(const Zvp64fc* pSrc, Zvp64fc val, Zvp64fc* pDst, int len);
ZvpStatus zvpsDivC_64fc_I(Zvp64fc val, Zvp64fc* pSrcDst, int len);
ZvpStatus zvpsDivCRev_16u(const Zvp16u* pSrc, Zvp16u val, Zvp16u* pDst, int len);
ZvpStatus zvpsDivCRev_16u_I(Zvp16u val, Zvp16u* pSrcDst, int len);
ZvpStatus zvpsDivCRev_32f(const Zvp32f* pSrc, Zvp32f val, Zvp32f* pDst, int len);
ZvpStatus zvpsDivCRev_32f_I(Zvp32f val, Zvp32f* pSrcDst, int len);

/* Div_Round: Div with the rounding of the scaled quotient chosen by rndMode
 * (zvpRndZero, zvpRndNear or zvpRndFinancial; any other value gives
 * zvpStsRoundModeNotSupportedErr after the pointer and length checks). The
 * caller's floating-point control word is restored before returning. */
ZvpStatus zvpsDiv_Round_8u_Sfs(const Zvp8u* pSrc1, const Zvp8u* pSrc2, Zvp8u* pDst, int len,
                               ZvpRoundMode rndMode, int scaleFactor);
ZvpStatus zvpsDiv_Round_8u_ISfs(const Zvp8u* pSrc, Zvp8u* pSrcDst, int len, ZvpRoundMode rndMode,
                                int scaleFactor);
ZvpStatus zvpsDiv_Round_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pDst, int len,
                                ZvpRoundMode rndMode, int scaleFactor);
ZvpStatus zvpsDiv_Round_16s_ISfs(const Zvp16s* pSrc, Zvp16s* pSrcDst, int len, ZvpRoundMode rndMode,
                                 int scaleFactor);
ZvpStatus zvpsDiv_Round_16u_Sfs(const Zvp16u* pSrc1, const Zvp16u* pSrc2, Zvp16u* pDst, int len,
                                ZvpRoundMode rndMode, int scaleFactor);
ZvpStatus zvpsDiv_Round_16u_ISfs(const Zvp16u* pSrc, Zvp16u* pSrcDst, int len, ZvpRoundMode rndMode,
                                 int scaleFactor);

/* AddProduct: pSrcDst[i] = pSrcDst[i] + pSrc1[i] * pSrc2[i]; integer forms
 * scale the exact sum. AddProductC_32f: pSrcDst[i] = pSrcDst[i] + pSrc[i] * val. */
ZvpStatus zvpsAddProduct_16s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp16s* pSrcDst, int len,
                                 int scaleFactor);
ZvpStatus zvpsAddProduct_16s32s_Sfs(const Zvp16s* pSrc1, const Zvp16s* pSrc2, Zvp32s* pSrcDst, int len,
                                    int scaleFactor);
ZvpStatus zvpsAddProduct_32s_Sfs(const Zvp32s* pSrc1, const Zvp32s* pSrc2, Zvp32s* pSrcDst, int len,
                                 int scaleFactor);
ZvpStatus zvpsAddProduct_32f(const Zvp32f* pSrc1, const Zvp32f* pSrc2, Zvp32f* pSrcDst, int len);
ZvpStatus zvpsAddProduct_32fc(const Zvp32fc* pSrc1, const Zvp32fc* pSrc2, Zvp32fc* pSrcDst, int len);
ZvpStatus zvpsAddProduct_64f(const Zvp64f* pSrc1, const Zvp64f* pSrc2, Zvp64f* pSrcDst, int len);
ZvpStatus zvpsAddProduct_64fc(const Zvp64fc* pSrc1, const Zvp64fc* pSrc2, Zvp64fc* pSrcDst, int len);
ZvpStatus zvpsAddProductC_32f(const Zvp32f* pSrc, Zvp32f val, Zvp32f* pSrcDst, int len);

#ifdef __cplusplus
}
#endif

#endif /* ZVPS_MULDIV_H */
