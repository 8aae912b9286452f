// How the filter has to talk to the printer, whatever the channel does to it.
#pragma once

#include <optional>
#include <string>

#include "tests/fuzz/conversation.h"

// Each walks through one use of the exchange and gives what it has to deliver: whether the
// printer was woken, the reply's bytes, the bytes of the last reply of an awake printer.
bool walk_wake_up(Conversation& conversation);
std::optional<std::string> walk_printer_status(Conversation& conversation);
std::optional<std::string> walk_job_status(Conversation& conversation);
std::optional<std::string> walk_retried_printer_status(Conversation& conversation);

// A side-channel status as the log writes it, "CUPS_SC_STATUS_TIMEOUT(3)".
std::string side_channel_status_text(long status);
