// Who is measured: the filter, and what it is held against.
#pragma once

#include <string>

struct Opponent {
  char const* name;
  char const* path;
  double pause;  // microseconds that its job is made to wait
};

inline constexpr double WAKE_UP_PAUSE = 500'000;

inline constexpr Opponent FILTER{"the filter", FILTER_PATH, WAKE_UP_PAUSE};
inline constexpr Opponent FLOOR{"floor: same calls, constant texts", FLOOR_PATH, WAKE_UP_PAUSE};
inline constexpr Opponent IN_PIECES{"the filter, dumps in pieces", IN_PIECES_PATH, WAKE_UP_PAUSE};
inline constexpr Opponent EMPTY{"empty program with libcups", EMPTY_PATH, 0};
inline constexpr Opponent TO_PS{"commandtops of CUPS", SYSTEM_FILTERS "commandtops", 0};
inline constexpr Opponent TO_ESCPX{"commandtoescpx of cups-filters",
                                   SYSTEM_FILTERS "commandtoescpx", 0};
inline constexpr Opponent TO_PCLX{"commandtopclx of cups-filters", SYSTEM_FILTERS "commandtopclx",
                                  0};

// Throws std::runtime_error unless the floor writes for a job just what the filter writes.
void check_floor();
