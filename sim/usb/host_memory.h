// The memory of the host's program, into which the kernel would look and write.
#pragma once

#include <umockdev.h>

#include <cstddef>
#include <memory>

namespace sim {

// What umockdev fetches from the client's memory, and writes back when the call is answered.
using Memory = std::shared_ptr<UMockdevIoctlData>;

// What the pointer at this offset points to; nothing if the client is gone.
inline Memory fetch(UMockdevIoctlData* data, std::size_t offset, std::size_t length)
{
  return {umockdev_ioctl_data_resolve(data, offset, length, nullptr),
          [](UMockdevIoctlData* memory) {
            if (memory != nullptr) g_object_unref(memory);
          }};
}

template <typename Struct>
Struct* as(void* memory)
{
  void* const data = static_cast<UMockdevIoctlData*>(memory)->data;
  return static_cast<Struct*>(data);
}

}  // namespace sim
