// velmoctl attach and velmoctl detach.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "admin/change_ppd.h"

struct AttachOptions {
  ChangeRules rules{};
  bool replace = false;
  bool no_ask = false;
  bool keep_fresh = false;
  bool no_reason_texts = false;
  std::optional<std::string> reason_texts;  // a file; "-" is standard input
  std::vector<std::string> queues;
};

// Both return the exit status: 1 if one of the queues was not done.
int run_attach(Scheduler const& scheduler, AttachOptions const& options);
int run_detach(Scheduler const& scheduler, AttachOptions const& options);
