// The machine into which the simulated USB printer is plugged: a folder of umockdev, which programs
// see in place of /sys and /dev, and whose calls on the device's node come here.
#include "sim/usb/testbed.h"

#include <asio/dispatch.hpp>
#include <filesystem>
#include <future>
#include <memory>
#include <stdexcept>
#include <utility>

namespace sim {

namespace {

// Lets every user in: a scheduler that root runs starts its backend as another one, which also
// puts files there.
void open_to_everybody(std::string const& folder)
{
  namespace fs = std::filesystem;
  auto const open = [](fs::path const& path) {
    bool const is_folder = fs::is_directory(fs::symlink_status(path));
    if (fs::is_symlink(path)) return;
    auto const wanted = is_folder ? fs::perms::all
                                  : fs::perms::owner_read | fs::perms::owner_write
                                        | fs::perms::group_read | fs::perms::group_write
                                        | fs::perms::others_read | fs::perms::others_write;
    std::error_code ignored;  // a host's own file may go while this one looks
    fs::permissions(path, wanted, fs::perm_options::add, ignored);
  };
  open(folder);
  for (auto const& entry : fs::recursive_directory_iterator(folder)) open(entry.path());
}

}  // namespace

Testbed::Testbed(asio::io_context& context, Callbacks what)
    : io(context),
      callbacks(std::move(what)),
      bed(umockdev_testbed_new()),
      calls(umockdev_ioctl_base_new())
{
  std::unique_ptr<gchar, decltype(&g_free)> const path(umockdev_testbed_get_root_dir(bed), g_free);
  root = path.get();
  g_signal_connect(calls, "handle-ioctl", G_CALLBACK(on_call), this);
  g_signal_connect(calls, "client-connected", G_CALLBACK(on_connected), this);
  umockdev_testbed_attach_ioctl(bed, USB_NODE, calls, nullptr);
}

Testbed::~Testbed()
{
  g_signal_handlers_disconnect_by_data(calls, this);
  g_object_unref(bed);
  g_object_unref(calls);
}

void Testbed::add(UsbDevice const& device)
{
  GError* error = nullptr;
  if (!umockdev_testbed_add_from_string(bed, sysfs_record(device).c_str(), &error)) {
    std::string const message = error->message;
    g_error_free(error);
    throw std::runtime_error(message);
  }
  open_to_everybody(root);
}

void Testbed::remove()
{
  std::string const path = std::string("/sys") + USB_SYSFS;
  umockdev_testbed_uevent(bed, path.c_str(), "remove");
  umockdev_testbed_remove_device(bed, path.c_str());
}

// umockdev has a thread of its own, which waits here: so nothing of the printer needs a lock. A
// client may also go in the printer's thread, which does not wait for itself. What fails in there
// ends the simulator, and leaves no host without an answer.
void Testbed::in_printers_thread(std::function<void()> const& work)
{
  if (io.stopped()) return;
  std::packaged_task<void()> task(work);
  auto done = task.get_future();
  asio::dispatch(io, [&task] { task(); });
  done.get();
}

// umockdev tells nobody that a client has gone, but nobody else keeps it: it is freed then, also
// when it was killed in the middle of a call.
void Testbed::on_connected(UMockdevIoctlBase* /*handler*/, UMockdevIoctlClient* client, void* self)
{
  auto& testbed = *static_cast<Testbed*>(self);
  g_object_weak_ref(G_OBJECT(client), on_gone, self);
  testbed.in_printers_thread([&] { testbed.callbacks.came(client); });
}

gboolean Testbed::on_call(UMockdevIoctlBase* /*handler*/, UMockdevIoctlClient* client, void* self)
{
  auto& testbed = *static_cast<Testbed*>(self);
  testbed.in_printers_thread([&] { testbed.callbacks.called(client); });
  return TRUE;
}

void Testbed::on_gone(void* self, GObject* client)
{
  auto& testbed = *static_cast<Testbed*>(self);
  testbed.in_printers_thread([&] { testbed.callbacks.went(client); });
}

}  // namespace sim
