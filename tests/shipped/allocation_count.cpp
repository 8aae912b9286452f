// Counts in place of the runtime's allocation. A file of its own: seen beside their callers,
// these pairs look mismatched to the compiler.
#include "tests/shipped/allocation_count.h"

#include <cstdlib>
#include <new>

namespace {

int allocations = 0;

}  // namespace

int allocation_count() { return allocations; }

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
  return std::malloc(size);
}

void operator delete(void* memory) noexcept { std::free(memory); }

void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
