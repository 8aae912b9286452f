// The other side of a connection to the simulator, as a spooler's backend would be.
#include "tests/harness/tcp_peer.h"

#include <gtest/gtest.h>
#include <linux/tcp.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace {

constexpr timeval PATIENCE{60, 0};  // far beyond what the slowest machine needs

int connect_to(std::uint16_t port, int descriptor)
{
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return connect(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address);
}

}  // namespace

TcpPeer::TcpPeer(std::uint16_t port) : descriptor_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
  setsockopt(descriptor_, SOL_SOCKET, SO_RCVTIMEO, &PATIENCE, sizeof PATIENCE);
  EXPECT_EQ(connect_to(port, descriptor_), 0);
}

TcpPeer::~TcpPeer()
{
  if (descriptor_ >= 0) close(descriptor_);
}

void TcpPeer::send(Bytes const& bytes) const
{
  EXPECT_EQ(::send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL),
            static_cast<ssize_t>(bytes.size()));
}

void TcpPeer::half_close() const { EXPECT_EQ(shutdown(descriptor_, SHUT_WR), 0); }

void TcpPeer::vanish()
{
  linger const reset{1, 0};
  setsockopt(descriptor_, SOL_SOCKET, SO_LINGER, &reset, sizeof reset);
  close(descriptor_);
  descriptor_ = -1;
}

TcpPeer::Bytes TcpPeer::receive(std::size_t count) const
{
  Bytes received;
  std::array<std::uint8_t, 4096> bytes{};
  while (received.size() < count) {
    auto const room = std::min(bytes.size(), count - received.size());
    auto const size = recv(descriptor_, bytes.data(), room, 0);
    EXPECT_GE(size, 0) << "the simulator neither answers nor closes";
    if (size <= 0) break;
    received.insert(received.end(), bytes.begin(), bytes.begin() + size);
  }
  return received;
}

TcpPeer::Bytes TcpPeer::receive_all() const { return receive(SIZE_MAX); }

unsigned TcpPeer::segments() const
{
  tcp_info info{};
  socklen_t size = sizeof info;
  EXPECT_EQ(getsockopt(descriptor_, IPPROTO_TCP, TCP_INFO, &info, &size), 0);
  return info.tcpi_data_segs_in;
}

bool is_refused(std::uint16_t port)
{
  int const descriptor = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  bool const refused = connect_to(port, descriptor) != 0 && errno == ECONNREFUSED;
  close(descriptor);
  return refused;
}
