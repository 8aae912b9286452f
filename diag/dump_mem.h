// Hexadecimal dump of the bytes exchanged with the printer.
#pragma once

// Writes `size` bytes at `data` to standard error as "DEBUG:" lines, 16 bytes a line,
// each line headed by `label` and the offset. A size of 0 gives the size line and an
// empty line at offset 0; a negative size gives the size line alone.
//
// The whole dump is one write, so other programs of the job cannot tear its lines.
void dump_mem(char const* label, void const* data, int size);
