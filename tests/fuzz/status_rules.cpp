// The layout of the status reply and the rules of the texts that come of it.
#include "tests/fuzz/status_rules.h"

#include "tests/oracle/reasons.h"

namespace {

// `count` bytes from `offset`, the first one highest.
unsigned number_at(std::string_view reply, std::size_t offset, std::size_t count)
{
  unsigned number = 0;
  for (char byte : reply.substr(offset, count))
    number = number * 256 + static_cast<unsigned char>(byte);
  return number;
}

void append_byte(std::string& text, unsigned byte)
{
  text += "0x";
  text += "0123456789abcdef"[byte / 16];
  text += "0123456789abcdef"[byte % 16];
}

}  // namespace

Status read_status(std::string_view reply)
{
  return {.memory = number_at(reply, 4, 1),
          .power = number_at(reply, 5, 1),
          .mech = number_at(reply, 128, 2),
          .error = number_at(reply, 131, 3),
          .ribbon = {.total = number_at(reply, 148, 2),
                     .remaining = number_at(reply, 150, 2),
                     .ink_sheet = number_at(reply, 145, 1)}};
}

bool is_awake(Status const& status) { return status.power == 0; }

bool is_mech_good(Status const& status) { return status.mech == 0 || status.mech == 0x2000; }

bool is_memory_free(Status const& status) { return status.memory < 255; }

unsigned state_code(Status const& status)
{
  return status.ribbon.remaining == 0 ? 0xfeed01 : status.error;
}

std::string info_text(Status const& status)
{
  std::string text = "power_state=";
  append_byte(text, status.power);
  text += " mech_state=[";
  append_byte(text, status.mech / 256);
  text += ",";
  append_byte(text, status.mech % 256);
  text += "] memory_state=";
  append_byte(text, status.memory);
  text += " error_info=[" + code_text(state_code(status)) + "] levels=[";
  append_ribbon_text(text, status.ribbon);
  text += "]";
  return text;
}

std::string job_text(std::string_view reply)
{
  std::string text;
  for (std::size_t offset = 8; offset < 12; ++offset) {
    if (!text.empty()) text += ",";
    append_byte(text, number_at(reply, offset, 1));
  }
  return text;
}

bool is_job_ready(std::string_view reply)
{
  unsigned const state = number_at(reply, 8, 2);
  return state / 256 != 0x10 && state / 256 != 0x20 && (state < 0x5000 || state > 0x502f);
}

void append_state_report(std::string& text, Status const& status)
{
  append_reason_report(text, state_code(status));
}

void append_ribbon_report(std::string& text, Status const& status)
{
  Ribbon const& ribbon = status.ribbon;
  // Exact: a double has more than enough digits for 65535 * 100 / 65534.
  append_level_report(
      text, ribbon,
      has_level(ribbon) ? static_cast<unsigned>(ribbon.remaining * 100.0 / ribbon.total) : 0);
}
