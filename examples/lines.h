/* lines.h: what the examples that read hexadecimal text share. It comes from strangers: nothing
 * here trusts its length or its contents. */
#ifndef LINES_H
#define LINES_H

#include <stddef.h>
#include <stdint.h>

/* Hands each line of standard input to `take`, without its end. A line for which `take` returns 0
 * is told on standard output, and so is one of more than 2504 characters, which `take` does not
 * see. Empty lines and those that begin with '+', which a modem puts ahead of a PDU, are passed
 * over. The result is the number of the lines that were told. */
long read_lines(int (*take)(const char *line));

/* Turns hexadecimal text into octets and returns their number: 0 if there are none or more than
 * `size`, which is at most 65535, and for anything but pairs of digits. What is left of `octets` is
 * set to 0. */
uint16_t octets_of(const char *hex, uint8_t *octets, size_t size);

/* Prints what a decoder gave, as `size` octets of UTF-8. The decoders turn each 16-bit unit into a
 * form of its own, so that a character above U+FFFF comes as two surrogates: they are joined here.
 * Control characters, which could steer a terminal, become blanks; those at the end are left out.
 */
void print_text(const uint8_t *text, size_t size);

#endif
