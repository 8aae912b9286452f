/* Start-up alone: a program that is linked to libcups and does nothing. */
#include <cups/cups.h>

/* Keeps the linker from dropping the library, and is never called. */
int (*volatile const NEEDED)(cups_file_t*) = cupsFileClose;

int main(void)
{
  return 0;
}
