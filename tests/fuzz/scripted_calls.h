// A channel to the printer that does whatever the fuzzer's bytes say.
#pragma once

#include <cstddef>
#include <cstdint>

// The bytes that decide the results of the calls from here on. Once they are used up, every
// call fails.
void follow_script(std::uint8_t const* bytes, std::size_t size);
