// Clears the reasons that the scheduler holds for the default destination, as a program.
#include "report/stale_reason_cleanup.h"

int main()
{
  clean_printer_state();
  return 0;
}
