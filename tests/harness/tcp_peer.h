// The other side of a connection to the simulator, as a spooler's backend would be.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

class TcpPeer {
public:
  using Bytes = std::vector<std::uint8_t>;

  explicit TcpPeer(std::uint16_t port);
  ~TcpPeer();

  TcpPeer(TcpPeer const&) = delete;
  TcpPeer& operator=(TcpPeer const&) = delete;

  void send(Bytes const& bytes) const;
  void half_close() const;  // sends no more, still receives
  void vanish();            // resets the connection

  // Both fail the test if the simulator keeps silent for a very long time.
  [[nodiscard]] Bytes receive(std::size_t count) const;  // fewer only at the end
  [[nodiscard]] Bytes receive_all() const;               // until the simulator closes

  // How many segments with data have arrived: pieces sent one by one are as many at least.
  [[nodiscard]] unsigned segments() const;

private:
  int descriptor_;
};

// Whether nobody takes connections at this port.
bool is_refused(std::uint16_t port);
