// The jobs of a queue, as far as they tell when its printer is to be asked.
#include "admin/queue_jobs.h"

#include <iterator>
#include <string_view>

namespace {

constexpr char const* ATTRIBUTES[] = {"document-format", "job-id", "job-state",
                                      "time-at-processing"};

void ask_for_attributes(Ipp const& request)
{
  ippAddStrings(request.get(), IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes",
                static_cast<int>(std::size(ATTRIBUTES)), nullptr, ATTRIBUTES);
}

// Of a job with several documents the scheduler tells the format of the last.
bool is_command_format(ipp_attribute_t* attribute)
{
  char const* const format = ippGetString(attribute, 0, nullptr);
  return format && std::string_view(format) == "application/vnd.cups-command";
}

void read_attribute(ipp_attribute_t* attribute, QueuedJob& job)
{
  std::string_view const name = ippGetName(attribute);
  if (name == "job-id") job.id = ippGetInteger(attribute, 0);
  if (name == "job-state") job.state = static_cast<ipp_jstate_t>(ippGetInteger(attribute, 0));
  if (name == "document-format") job.is_command = is_command_format(attribute);
  if (name == "time-at-processing") job.was_begun = ippGetValueTag(attribute) == IPP_TAG_INTEGER;
}

std::vector<QueuedJob> read_jobs(Answer const& answer)
{
  std::vector<QueuedJob> jobs;
  for (auto const& group : groups(answer, IPP_TAG_JOB)) {
    jobs.emplace_back();
    for (ipp_attribute_t* const attribute : group) read_attribute(attribute, jobs.back());
  }
  return jobs;
}

}  // namespace

std::optional<std::vector<QueuedJob>> open_jobs(Scheduler const& scheduler,
                                                std::string const& queue, Whose whose)
{
  Ipp request = make_request(IPP_OP_GET_JOBS, queue);
  ippAddBoolean(request.get(), IPP_TAG_OPERATION, "my-jobs", whose == Whose::Ours ? 1 : 0);
  ask_for_attributes(request);
  Answer const answer = send(scheduler, std::move(request), "/");
  if (!answer.error.empty()) return std::nullopt;
  return read_jobs(answer);
}

std::optional<QueuedJob> ended_job(Scheduler const& scheduler, std::string const& queue, int id)
{
  Ipp request = make_request(IPP_OP_GET_JOB_ATTRIBUTES, queue);
  ippAddInteger(request.get(), IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-id", id);
  ask_for_attributes(request);
  std::vector<QueuedJob> const jobs = read_jobs(send(scheduler, std::move(request), "/"));
  if (jobs.empty()) return std::nullopt;
  return jobs.front();
}

bool was_print(QueuedJob const& job) { return !job.is_command && job.was_begun; }

// One that is thrown out of the history ends as cancelled as well, when nothing is printing.
bool was_print(JobTraces const& traces)
{
  if (traces.state == IPP_JSTATE_CANCELED) return traces.is_printing;
  return traces.begun == 0 || traces.level_time <= traces.begun;
}
