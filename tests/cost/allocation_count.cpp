// Counts in place of the runtime's allocation. A file of its own: seen beside their callers,
// these pairs look mismatched to the compiler.
#include "tests/cost/allocation_count.h"

#include <cstdlib>
#include <new>

namespace {

int allocations = 0;

}  // namespace

int allocation_count() { return allocations; }

void* operator new(std::size_t size)
{
  ++allocations;
  void* const memory = std::malloc(size);
  if (!memory) throw std::bad_alloc();
  return memory;
}

void operator delete(void* memory) noexcept { std::free(memory); }

void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
