// Operator new in the place of the runtime's. A file of its own: seen beside their callers, these
// pairs look mismatched to the compiler.
#include "tests/harness/counted_allocations.h"

#include <cstdlib>
#include <new>

namespace {

int allocations = 0;
int blocks = 0;
bool (*allocation_fails)() = [] { return false; };

}  // namespace

int allocation_count() { return allocations; }

int living_blocks() { return blocks; }

void let_allocations_fail(bool (*fails)()) { allocation_fails = fails; }

void* operator new(std::size_t size)
{
  void* const memory = operator new(size, std::nothrow);
  if (!memory) throw std::bad_alloc();
  return memory;
}

// Replaced as well: what a sanitizer's version gives must not come to the delete below.
void* operator new(std::size_t size, std::nothrow_t const& /*tag*/) noexcept
{
  ++allocations;
  void* const memory = allocation_fails() ? nullptr : std::malloc(size);
  if (memory) ++blocks;
  return memory;
}

void operator delete(void* memory) noexcept
{
  if (memory) --blocks;
  std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept { operator delete(memory); }
