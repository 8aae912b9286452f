// The calls of the destination list, noted on their way.
#include "tests/harness/fake_destinations.h"

#include <utility>

#include "tests/harness/fake_world.h"
#include "tests/harness/replaced_calls.h"

namespace {

FakeDestinations const* fake = nullptr;
int handed_count = 0;
cups_dest_t* handed_list = nullptr;

// Whether a call got the list, whole, that cupsGetDests gave out.
char const* list_name(int count, cups_dest_t const* list)
{
  return count == handed_count && list == handed_list ? "the list" : "another list";
}

char const* or_null(char const* text) { return text ? text : "NULL"; }

// Whether a call got the options, all of them, of the default destination.
char const* options_name(int count, cups_option_t const* options)
{
  for (int i = 0; i < handed_count; ++i) {
    cups_dest_t const& candidate = handed_list[i];
    if (candidate.is_default && candidate.options == options && candidate.num_options == count) {
      return "the default's options";
    }
  }
  return "other options";
}

void note(std::string const& call) { FakeWorld::current()->note(call); }

int play_get_dests(cups_dest_t** list)
{
  note("cupsGetDests()");
  handed_count = 0;
  handed_list = nullptr;
  for (auto const& wanted : fake->destinations) {
    handed_count = cupsAddDest(wanted.name.c_str(), nullptr, handed_count, &handed_list);
    cups_dest_t* made =
        REAL_CALLS.get_dest(wanted.name.c_str(), nullptr, handed_count, handed_list);
    made->is_default = wanted.is_default;
    for (auto const& [name, value] : wanted.options) {
      made->num_options =
          cupsAddOption(name.c_str(), value.c_str(), made->num_options, &made->options);
    }
  }
  *list = handed_list;
  return handed_count;
}

cups_dest_t* play_get_dest(char const* name, char const* instance, int count, cups_dest_t* list)
{
  note(std::string("cupsGetDest(") + or_null(name) + ", " + or_null(instance) + ", "
       + list_name(count, list) + ")");
  return REAL_CALLS.get_dest(name, instance, count, list);
}

char const* play_get_option(char const* name, int count, cups_option_t* options)
{
  note(std::string("cupsGetOption(") + name + ", " + options_name(count, options) + ")");
  return REAL_CALLS.get_option(name, count, options);
}

void play_free_dests(int count, cups_dest_t* list)
{
  note(std::string("cupsFreeDests(") + list_name(count, list) + ")");
  REAL_CALLS.free_dests(count, list);
}

char* play_strdup(char const* text)
{
  return fake->strdup_fails ? nullptr : REAL_CALLS.strdup(text);
}

}  // namespace

FakeDestinations::FakeDestinations(std::vector<Destination> list) : destinations(std::move(list))
{
  fake = this;
  replaced_calls.get_dests = play_get_dests;
  replaced_calls.get_dest = play_get_dest;
  replaced_calls.get_option = play_get_option;
  replaced_calls.free_dests = play_free_dests;
  replaced_calls.strdup = play_strdup;
}
