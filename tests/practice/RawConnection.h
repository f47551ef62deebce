#pragma once

#include <string>
#include <string_view>

namespace vantrel::practice::test {

/// A connection to 127.0.0.1 for any bytes, HTTP or not.
class RawConnection {
  public:
    explicit RawConnection(int port);
    ~RawConnection();
    RawConnection(RawConnection&& other) noexcept;
    RawConnection& operator=(RawConnection&&) = delete;

    /// Whether all bytes could be sent.
    bool send(std::string_view bytes) const;
    /// Everything until the other side closes or resets the connection.
    std::string readAll() const;
    /// Whether the other side keeps the connection open. Received bytes count as open.
    bool isOpen() const;
    void close();

  private:
    int socket_ = -1;
};

}  // namespace vantrel::practice::test
