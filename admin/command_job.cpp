// The command jobs that velmoctl sends.
#include "admin/command_job.h"

#include "admin/memory_file.h"

namespace {

constexpr char const* JOB_NAME = "velmoctl ask";
constexpr int CANCEL_SECONDS = 60;
constexpr int HIGHEST_PRIORITY = 100;
// The levels come last: once they are in, the errors are in as well.
constexpr char const* COMMANDS = "#CUPS-COMMAND\nReportStatus\nReportLevels\n";

Ipp job_request(ipp_op_t operation, std::string const& queue, int id)
{
  Ipp request = make_request(operation, queue);
  ippAddInteger(request.get(), IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-id", id);
  return request;
}

void read_attribute(ipp_attribute_t* attribute, Job& job)
{
  std::string_view const name = ippGetName(attribute);
  if (name == "job-id") job.id = ippGetInteger(attribute, 0);
  if (name == "job-state") job.state = static_cast<ipp_jstate_t>(ippGetInteger(attribute, 0));
  if (name != "job-name") return;
  char const* const text = ippGetString(attribute, 0, nullptr);
  job.name = text ? text : "";
}

// A queue can allow some users only, or all but some.
std::string refusal(Answer const& answer)
{
  bool const is_for_user = answer.status == IPP_STATUS_ERROR_NOT_AUTHORIZED;
  return answer.error + (is_for_user ? "; a queue's list of users is changed by lpadmin -u" : "");
}

std::vector<Job> read_jobs(Answer const& answer)
{
  std::vector<Job> jobs;
  for (auto const& group : groups(answer, IPP_TAG_JOB)) {
    jobs.emplace_back();
    for (ipp_attribute_t* const attribute : group) read_attribute(attribute, jobs.back());
  }
  return jobs;
}

}  // namespace

SentJob send_ask(Scheduler const& scheduler, std::string const& queue)
{
  MemoryFile const file(COMMANDS);
  if (!file.exists()) return {0, NO_MEMORY_FILE};
  Ipp request = make_request(IPP_OP_PRINT_JOB, queue);
  ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "job-name", nullptr, JOB_NAME);
  ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_MIMETYPE, "document-format", nullptr,
               "application/vnd.cups-command");
  // A default banner would be printed on photo paper.
  ippAddString(request.get(), IPP_TAG_JOB, IPP_TAG_NAME, "job-sheets", nullptr, "none");
  // Nor would a default hour of the queue ever let it through while somebody waits.
  ippAddString(request.get(), IPP_TAG_JOB, IPP_TAG_KEYWORD, "job-hold-until", nullptr, "no-hold");
  ippAddInteger(request.get(), IPP_TAG_JOB, IPP_TAG_INTEGER, "job-cancel-after", CANCEL_SECONDS);
  ippAddInteger(request.get(), IPP_TAG_JOB, IPP_TAG_INTEGER, "job-priority", HIGHEST_PRIORITY);
  Answer const answer = send(scheduler, std::move(request), "/", file.descriptor());
  if (!answer.error.empty()) return {0, refusal(answer)};
  for (Job const& job : read_jobs(answer))
    if (job.id > 0) return {job.id, {}};
  return {0, "the scheduler gave the job no number"};
}

std::optional<int> waiting_ask(Scheduler const& scheduler, std::string const& queue)
{
  constexpr char const* ATTRIBUTES[] = {"job-id", "job-name", "job-state"};
  Ipp request = make_request(IPP_OP_GET_JOBS, queue);
  ippAddBoolean(request.get(), IPP_TAG_OPERATION, "my-jobs", 1);
  ippAddStrings(request.get(), IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes", 3,
                nullptr, ATTRIBUTES);
  Answer const answer = send(scheduler, std::move(request), "/");
  for (Job const& job : read_jobs(answer))
    if (job.name == JOB_NAME && job.state == IPP_JSTATE_PENDING) return job.id;
  return std::nullopt;
}

std::optional<ipp_jstate_t> job_state(Scheduler const& scheduler, std::string const& queue, int id)
{
  Ipp request = job_request(IPP_OP_GET_JOB_ATTRIBUTES, queue, id);
  add_keyword(request, IPP_TAG_OPERATION, "requested-attributes", "job-state");
  Answer const answer = send(scheduler, std::move(request), "/");
  std::vector<Job> const jobs = read_jobs(answer);
  if (jobs.empty()) return std::nullopt;
  return jobs.front().state;
}

void cancel_job(Scheduler const& scheduler, std::string const& queue, int id)
{
  send(scheduler, job_request(IPP_OP_CANCEL_JOB, queue, id), "/jobs/");
}
