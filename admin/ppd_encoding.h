// The character encoding that a PPD file names for its texts.
#pragma once

#include <cups/cups.h>

#include <optional>
#include <string>
#include <vector>

#include "admin/ppd_records.h"

// What *LanguageEncoding names; ISO Latin 1 without that line.
cups_encoding_t ppd_encoding(std::vector<PpdRecord> const& records);

// The text in that encoding; nothing if a character cannot be written in it.
std::optional<std::string> encoded(std::string const& utf8, cups_encoding_t encoding);

// A text of the PPD file as UTF-8; unchanged if it is no text of that encoding.
std::string decoded(std::string const& text, cups_encoding_t encoding);
