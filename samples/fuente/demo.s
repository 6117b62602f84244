| Sample firmware for a ColdFire part with 256 KiB of flash: it blinks its name in Morse code.
| Laid out like real firmware: vectors at 0, configuration field at 0x400, code behind it, data apart at 0x1000.

        .equ    PILA,      0x20008000           | end of the RAM
        .equ    PORTTC,    0x4010000F           | port TC: output
        .equ    DDRTC,     0x40100027           | port TC: direction
        .equ    LED,       0x01
        .equ    PUNTO,     200000               | length of a dot in turns of the delay loop

| ---------------------------------------------------------------------------------------------- vectors
        .section .vectores, "a"
        .long   PILA
        .long   inicio
        .rept   254
        .long   parada
        .endr

| ------------------------------------------------------------------------------------------------- code
| `.org` counts from the start of this section, which lies at 0x400.
        .section .programa, "ax"
campo_config:
        .ascii  "MORVANE!"                      | key: no other key opens the part
        .long   0x00000000                      | no sector protected
        .long   0x00000000
        .long   0x00000000
        .long   0x00000000                      | not secured
        .org    0x20, 0xFF

        .globl  inicio
inicio:
        move.w  #0x2700, %sr
        moveq   #LED, %d0
        move.b  %d0, DDRTC
        bsr     sumar_ficha
otra_vez:
        lea     mensaje, %a2
siguiente:
        moveq   #0, %d0
        move.b  (%a2)+, %d0
        beq     fin_mensaje
        bsr     letra
        bra     siguiente
fin_mensaje:
        moveq   #7, %d1
        bsr     esperar
        bra     otra_vez

| Blinks the letter in d0. Its code holds a bit for each sign, 1 a dash, behind a leading 1.
letra:
        sub.l   #'A', %d0
        lea     morse, %a0
        moveq   #0, %d3
        move.b  (%a0,%d0.l), %d3
        moveq   #31, %d4
buscar_guia:
        subq.l  #1, %d4
        btst    %d4, %d3
        beq     buscar_guia
signo:
        subq.l  #1, %d4
        bmi     fin_letra
        moveq   #LED, %d0
        move.b  %d0, PORTTC
        moveq   #1, %d1
        btst    %d4, %d3
        beq     corto
        moveq   #3, %d1
corto:
        bsr     esperar
        moveq   #0, %d0
        move.b  %d0, PORTTC
        moveq   #1, %d1
        bsr     esperar
        bra     signo
fin_letra:
        moveq   #2, %d1
        bsr     esperar
        rts

| Waits for d1 dots.
esperar:
        move.l  #PUNTO, %d2
vuelta:
        subq.l  #1, %d2
        bne     vuelta
        subq.l  #1, %d1
        bne     esperar
        rts

| Leaves the sum of the bytes of the record at 0x1000 in d7, where a debugger finds it.
sumar_ficha:
        lea     ficha, %a0
        move.l  #fin_ficha, %d1
        moveq   #0, %d7
sumar_byte:
        moveq   #0, %d0
        move.b  (%a0)+, %d0
        add.l   %d0, %d7
        cmp.l   %a0, %d1
        bne     sumar_byte
        rts

parada:
        stop    #0x2700
        bra     parada

morse:  .byte   0b101, 0b11000, 0b11010, 0b1100, 0b10, 0b10010, 0b1110, 0b10000, 0b100      | A to I
        .byte   0b10111, 0b1101, 0b10100, 0b111, 0b110, 0b1111, 0b10110, 0b11101, 0b1010    | J to R
        .byte   0b1000, 0b11, 0b1001, 0b10001, 0b1011, 0b11001, 0b11011, 0b11100            | S to Z
mensaje:
        .asciz  "MORVANE"
        .balign 4, 0xFF

| ------------------------------------------------------------------------------------------------- data
        .section .datos, "a"
ficha:
        .ascii  "Morvane: programa de muestra 1.0. Hace parpadear su nombre en codigo Morse. "
        .ascii  "Este texto esta en la direccion 0x001000 y sirve para reconocer el volcado. "
        .balign 16, '.'
rampa:
        .set    i, 0
        .rept   256
        .byte   i
        .set    i, i + 1
        .endr
cuadrados:
        .set    i, 0
        .rept   256
        .word   i * i & 0xFFFF
        .set    i, i + 1
        .endr
        .ascii  "Fin de la muestra."            | no whole number of groups of four, on purpose
fin_ficha:
