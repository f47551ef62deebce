#pragma once

#include <string>
#include <string_view>

namespace vantrel::practice::test {

/// A connection to 127.0.0.1 over which any bytes go, whether HTTP or not.
class RawConnection {
  public:
    explicit RawConnection(int port);
    ~RawConnection();
    RawConnection(RawConnection&& other) noexcept;
    RawConnection& operator=(RawConnection&&) = delete;

    /// Whether all bytes could be handed on.
    bool send(std::string_view bytes) const;
    /// Everything until the other side closes, or cuts the connection off.
    std::string readAll() const;
    /// Whether the other side still holds the connection; bytes that came in count as that.
    bool isOpen() const;
    void close();

  private:
    int socket_ = -1;
};

}  // namespace vantrel::practice::test
