#include "platform/linux/network/OneTimeBody.h"

#include <algorithm>
#include <utility>

namespace vantrel::linuxdesktop {

OneTimeBody::OneTimeBody(QByteArray bytes) : bytes_(std::move(bytes)) {
    open(QIODevice::ReadOnly);
}

qint64 OneTimeBody::bytesAvailable() const {
    return bytes_.size() - position_ + QIODevice::bytesAvailable();
}

bool OneTimeBody::atEnd() const {
    return bytesAvailable() == 0;
}

bool OneTimeBody::seek(qint64) {
    return false;
}

qint64 OneTimeBody::readData(char* target, qint64 most) {
    // -1 is the final end; 0 would mean that more may come.
    if (position_ == bytes_.size()) return -1;
    const qint64 count = std::min<qint64>(most, bytes_.size() - position_);
    std::copy_n(bytes_.constData() + position_, count, target);
    position_ += count;
    return count;
}

qint64 OneTimeBody::writeData(const char*, qint64) {
    return -1;
}

}  // namespace vantrel::linuxdesktop
