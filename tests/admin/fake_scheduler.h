// A scheduler of one queue in the test's own process: it answers what velmoctl sends with
// cupsDoIORequest and cupsGetFd, and one request of a test goes wrong.
#pragma once

#include <cups/cups.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "admin/scheduler.h"

// A PPD file that libcups can read, without a command filter.
inline constexpr char const* PLAIN_PPD =
    "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n*FileVersion: \"1\"\n*LanguageVersion: English\n"
    "*LanguageEncoding: ISOLatin1\n*PCFileName: \"V.PPD\"\n*Manufacturer: \"V\"\n*Product: "
    "\"(V)\"\n"
    "*ModelName: \"V\"\n*ShortNickName: \"V\"\n*NickName: \"V\"\n*PSVersion: \"(3010.000) 0\"\n"
    "*cupsFilter: \"application/vnd.cups-raster 0 rastertolabel\"\n";

// What becomes of a request that goes wrong.
enum class Mishap {
  None,
  Forbidden,  // by the scheduler's policy
  NotFound,
  Busy,        // with the scheduler's own words
  NoAnswer,    // not carried out
  AnswerLost,  // carried out, but the connection broke before the answer
  BrokenOff,   // in the midst of what comes behind the answer
  Empty,       // carried out, and a good answer that says nothing
};

// What the scheduler tells of a job: the next row each time it is asked, then always the last.
struct JobRow {
  ipp_jstate_t state;
  int level_time;  // of the queue, from then on
};

struct FakeScheduler {
  std::string ppd;
  std::optional<std::string> conf;  // its cupsd.conf; nothing: shown to nobody
  bool is_conf_broken_off = false;
  std::vector<std::string> reasons;
  std::string message;
  ipp_pstate_t state = IPP_PSTATE_IDLE;
  bool accepting = true;
  bool is_class = false;
  int level_time = 1000;

  std::vector<JobRow> job_rows{{IPP_JSTATE_COMPLETED, 2000}};
  int job = 0;                  // that is there; 0: none
  bool is_job_waiting = false;  // and is an ask, sent before
  bool is_job_cancelled = false;

  int failing_request = 0;  // counted from 1; 0: none
  bool goes_on = false;     // so do all requests after it
  Mishap mishap = Mishap::None;
  std::function<void(int request, ipp_op_t operation)> before_request{};
  std::vector<ipp_op_t> requests;

  [[nodiscard]] bool has(char const* reason) const;
};

// While it lives, requests are answered by this scheduler, and pauses take no time.
class FakeConnection {
public:
  explicit FakeConnection(FakeScheduler& answering);
  ~FakeConnection();
  FakeConnection(FakeConnection const&) = delete;
  FakeConnection& operator=(FakeConnection const&) = delete;

  Scheduler const scheduler{"fake", nullptr};
};
