#pragma once

#include <QByteArray>
#include <QIODevice>

namespace vantrel::linuxdesktop {

/// A request's body that cannot be read twice. If the server hangs up before it has answered, Qt sends a request again,
/// up to three times. With a body that cannot be rewound it fails instead. That is required: no exchange is repeated.
class OneTimeBody final : public QIODevice {
  public:
    explicit OneTimeBody(QByteArray bytes);

    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override;
    bool atEnd() const override;
    bool seek(qint64 position) override;

  protected:
    qint64 readData(char* target, qint64 most) override;
    qint64 writeData(const char* source, qint64 count) override;

  private:
    const QByteArray bytes_;
    qint64 position_ = 0;
};

}  // namespace vantrel::linuxdesktop
