// Sends a message. The arguments stay in place while the method is looked up, which C++ cannot express.
#if !defined(__x86_64__)
#error "The stand-ins' Objective-C runtime is written for x86-64."
#endif

__asm__(R"(
    .text

.macro KEEP_ARGUMENTS
    pushq %rbp
    .cfi_def_cfa_offset 16
    .cfi_offset rbp, -16
    movq %rsp, %rbp
    .cfi_def_cfa_register rbp
    subq $0xc0, %rsp
    movups %xmm0, 0x00(%rsp)
    movups %xmm1, 0x10(%rsp)
    movups %xmm2, 0x20(%rsp)
    movups %xmm3, 0x30(%rsp)
    movups %xmm4, 0x40(%rsp)
    movups %xmm5, 0x50(%rsp)
    movups %xmm6, 0x60(%rsp)
    movups %xmm7, 0x70(%rsp)
    movq %rdi, 0x80(%rsp)
    movq %rsi, 0x88(%rsp)
    movq %rdx, 0x90(%rsp)
    movq %rcx, 0x98(%rsp)
    movq %r8, 0xa0(%rsp)
    movq %r9, 0xa8(%rsp)
    movq %rax, 0xb0(%rsp)
    movq %r10, 0xb8(%rsp)
.endm

# The method that was found goes into %r11.
.macro RESTORE_ARGUMENTS
    movq %rax, %r11
    movups 0x00(%rsp), %xmm0
    movups 0x10(%rsp), %xmm1
    movups 0x20(%rsp), %xmm2
    movups 0x30(%rsp), %xmm3
    movups 0x40(%rsp), %xmm4
    movups 0x50(%rsp), %xmm5
    movups 0x60(%rsp), %xmm6
    movups 0x70(%rsp), %xmm7
    movq 0x80(%rsp), %rdi
    movq 0x88(%rsp), %rsi
    movq 0x90(%rsp), %rdx
    movq 0x98(%rsp), %rcx
    movq 0xa0(%rsp), %r8
    movq 0xa8(%rsp), %r9
    movq 0xb0(%rsp), %rax
    movq 0xb8(%rsp), %r10
    leave
    .cfi_def_cfa rsp, 8
.endm

.macro FUNCTION name
    .globl \name
    .type \name, @function
    .balign 16
\name:
    .cfi_startproc
.endm

.macro END_FUNCTION name
    .cfi_endproc
    .size \name, . - \name
.endm

# %rdi is the receiver, %rsi the selector. A message to nil gives zero.
FUNCTION objc_msgSend
    testq %rdi, %rdi
    je 1f
    KEEP_ARGUMENTS
    call vantrel_method
    RESTORE_ARGUMENTS
    jmp *%r11
1:  xorl %eax, %eax
    xorl %edx, %edx
    pxor %xmm0, %xmm0
    pxor %xmm1, %xmm1
    ret
END_FUNCTION objc_msgSend

# The same for a result that the caller has made room for; %rdi is that room.
FUNCTION objc_msgSend_stret
    testq %rsi, %rsi
    je 1f
    KEEP_ARGUMENTS
    movq %rsi, %rdi
    movq %rdx, %rsi
    call vantrel_method
    RESTORE_ARGUMENTS
    jmp *%r11
1:  movq %rdi, %rax
    ret
END_FUNCTION objc_msgSend_stret

# %rdi is a SuperMessage.
FUNCTION objc_msgSendSuper2
    KEEP_ARGUMENTS
    call vantrel_super_method
    RESTORE_ARGUMENTS
    movq (%rdi), %rdi
    jmp *%r11
END_FUNCTION objc_msgSendSuper2

FUNCTION objc_msgSendSuper2_stret
    KEEP_ARGUMENTS
    movq %rsi, %rdi
    movq %rdx, %rsi
    call vantrel_super_method
    RESTORE_ARGUMENTS
    movq (%rsi), %rsi
    jmp *%r11
END_FUNCTION objc_msgSendSuper2_stret
)");
