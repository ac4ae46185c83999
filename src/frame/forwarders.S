/* One thin forwarder per export: jump through the export's pointer slot with
 * the caller's arguments (registers and stack) untouched. */

#if defined(__x86_64__)
#define X(name)                                  \
    .globl name;                                 \
    .type name, @function;                       \
    .p2align 4;                                  \
name:                                            \
    jmp *name##_arraddr(%rip);                   \
    .size name, . - name;
#elif defined(__i386__)
/* %ecx is caller-saved and carries no argument in the C calling convention,
 * so it can hold the GOT address while the stack stays as the caller left it. */
#define X(name)                                  \
    .globl name;                                 \
    .type name, @function;                       \
    .p2align 4;                                  \
name:                                            \
    call __x86.get_pc_thunk.cx;                  \
    addl $_GLOBAL_OFFSET_TABLE_, %ecx;           \
    jmp *name##_arraddr@GOTOFF(%ecx);            \
    .size name, . - name;

    .section .text.__x86.get_pc_thunk.cx,"axG",@progbits,__x86.get_pc_thunk.cx,comdat
    .globl __x86.get_pc_thunk.cx
    .hidden __x86.get_pc_thunk.cx
    .type __x86.get_pc_thunk.cx, @function
__x86.get_pc_thunk.cx:
    movl (%esp), %ecx
    ret
    .size __x86.get_pc_thunk.cx, . - __x86.get_pc_thunk.cx
#else
#error "unsupported target"
#endif

    .text
#include "exports.def"

    .section .note.GNU-stack,"",@progbits
