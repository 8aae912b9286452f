// Makes a PPD file name commandtovelmo, and undoes it. Bytes in, bytes out.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "admin/reason_texts.h"

// What becomes of the texts for the printer's errors when nothing is said about them: those
// that the block holds stay.
struct AttachWishes {
  bool replace = false;                                 // rival lines may be replaced
  std::optional<std::vector<ReasonText>> reason_texts;  // these, in place of those in the block
};

struct PpdChange {
  std::string ppd;                  // as it is to be; the same bytes if nothing is to be done
  std::string refusal;              // empty, or why it is left alone and what to do
  std::vector<std::string> rivals;  // the lines that stand in the way, when refused for them
};

PpdChange attach(std::string_view ppd, AttachWishes const& wishes);

// Gives back the file of before `attach`, byte for byte.
PpdChange detach(std::string_view ppd);

// How a queue stands, by its PPD file alone.
struct Attachment {
  bool is_attached;
  std::string problem;  // empty if it is attached as it should be, or not at all
};

Attachment read_attachment(std::string_view ppd);
