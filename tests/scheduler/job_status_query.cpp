// Asks for the job status once, on the descriptors that a filter has, and says what it got.
#include <string>

#include "diag/message.h"
#include "protocol/queries.h"

int main()
{
  JobStatus const status = get_job_status();
  write_message("job_status=[", status.to_string(), "] ready=", status.isReady() ? "yes" : "no",
                "\n");
  return 0;
}
