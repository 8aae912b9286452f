// Operator new in the place of the runtime's: counted, and able to fail. A file of its own:
// seen beside their callers, these pairs look mismatched to the compiler.
#include "tests/faults/failing_allocation.h"

#include <cstdlib>
#include <new>

#include "tests/faults/outside_calls.h"

namespace {

int blocks = 0;

}  // namespace

int living_blocks() { return blocks; }

void* operator new(std::size_t size)
{
  void* const memory = operator new(size, std::nothrow);
  if (!memory) throw std::bad_alloc();
  return memory;
}

// Replaced as well: what a sanitizer's version gives must not come to the delete below.
void* operator new(std::size_t size, std::nothrow_t const& /*tag*/) noexcept
{
  void* const memory = call_fails(Call::Allocation) ? nullptr : std::malloc(size);
  if (memory) ++blocks;
  return memory;
}

void operator delete(void* memory) noexcept
{
  if (memory) --blocks;
  std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept { operator delete(memory); }
