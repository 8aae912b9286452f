// The replaced calls of the destination list; the linker sends them here with --wrap.
#include "tests/harness/fake_destinations.h"

#include <cups/cups.h>

#include <cstring>
#include <utility>

#include "tests/harness/fake_world.h"

namespace {

FakeDestinations* fake = nullptr;
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
  for (int i = 0; i < handed_count; i++) {
    cups_dest_t const& candidate = handed_list[i];
    if (candidate.is_default && candidate.options == options && candidate.num_options == count) {
      return "the default's options";
    }
  }
  return "other options";
}

void note(std::string const& call) { FakeWorld::current()->note(call); }

}  // namespace

FakeDestinations::FakeDestinations(std::vector<Destination> list) : destinations(std::move(list))
{
  fake = this;
}

FakeDestinations::~FakeDestinations() { fake = nullptr; }

// The names that --wrap asks for are reserved ones; there is no other way to spell them.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
extern "C" {

int __real_cupsGetDests(cups_dest_t** list);
cups_dest_t* __real_cupsGetDest(char const* name, char const* instance, int count,
                                cups_dest_t* list);
char const* __real_cupsGetOption(char const* name, int count, cups_option_t* options);
void __real_cupsFreeDests(int count, cups_dest_t* list);
char* __real_strdup(char const* text);

int __wrap_cupsGetDests(cups_dest_t** list)
{
  if (!fake) return __real_cupsGetDests(list);
  note("cupsGetDests()");
  handed_count = 0;
  handed_list = nullptr;
  for (auto const& wanted : fake->destinations) {
    handed_count = cupsAddDest(wanted.name.c_str(), nullptr, handed_count, &handed_list);
    cups_dest_t* made = __real_cupsGetDest(wanted.name.c_str(), nullptr, handed_count, handed_list);
    made->is_default = wanted.is_default;
    for (auto const& [name, value] : wanted.options) {
      made->num_options =
          cupsAddOption(name.c_str(), value.c_str(), made->num_options, &made->options);
    }
  }
  *list = handed_list;
  return handed_count;
}

cups_dest_t* __wrap_cupsGetDest(char const* name, char const* instance, int count,
                                cups_dest_t* list)
{
  if (!fake) return __real_cupsGetDest(name, instance, count, list);
  note(std::string("cupsGetDest(") + or_null(name) + ", " + or_null(instance) + ", "
       + list_name(count, list) + ")");
  return __real_cupsGetDest(name, instance, count, list);
}

char const* __wrap_cupsGetOption(char const* name, int count, cups_option_t* options)
{
  if (!fake) return __real_cupsGetOption(name, count, options);
  note(std::string("cupsGetOption(") + name + ", " + options_name(count, options) + ")");
  return __real_cupsGetOption(name, count, options);
}

void __wrap_cupsFreeDests(int count, cups_dest_t* list)
{
  if (!fake) return __real_cupsFreeDests(count, list);
  note(std::string("cupsFreeDests(") + list_name(count, list) + ")");
  __real_cupsFreeDests(count, list);
}

char* __wrap_strdup(char const* text)
{
  return fake && fake->strdup_fails ? nullptr : __real_strdup(text);
}

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
