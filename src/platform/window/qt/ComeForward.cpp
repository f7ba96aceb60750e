#include "platform/window/qt/ComeForward.h"

#include <QLocalSocket>
#include <QTimer>
#include <chrono>
#include <memory>
#include <utility>

#include "platform/window/qt/OtherCopy.h"

namespace burnwick {

namespace {

using namespace std::chrono_literals;

const QByteArray& Request() {
    static const QByteArray text("come forward\n");
    return text;
}

const QByteArray& Consent() {
    static const QByteArray text("coming\n");
    return text;
}

// Reads on towards the text that is to come. False when something else came.
bool ReadTowards(QLocalSocket& socket, const QByteArray& text, QByteArray& soFar) {
    soFar += socket.read(text.size() - soFar.size());
    return text.startsWith(soFar);
}

int Milliseconds(const QDeadlineTimer& deadline) {
    return static_cast<int>(deadline.remainingTime());
}

}  // namespace

bool AskToComeForward(const QString& socketName, QDeadlineTimer deadline) {
    QLocalSocket socket;
    socket.connectToServer(socketName);
    if (!socket.waitForConnected(Milliseconds(deadline)) || !LetComeForward(socket.socketDescriptor())) {
        return false;
    }
    socket.write(Request());
    QByteArray answer;
    while (answer != Consent()) {
        if (!socket.waitForReadyRead(Milliseconds(deadline)) || !ReadTowards(socket, Consent(), answer)) {
            return false;
        }
    }
    return true;
}

// A connection until it is settled: the request is whole, or will never be one.
class ComeForwardServer::Caller {
public:
    Caller(std::unique_ptr<QLocalSocket> socket, std::function<void()> settled)
        : Settled_(std::move(settled)), Socket_(std::move(socket)) {
        constexpr auto patience = 1s;
        Socket_->setReadBufferSize(Request().size());
        QObject::connect(Socket_.get(), &QLocalSocket::readyRead, Socket_.get(), [this] { Read(); });
        QObject::connect(Socket_.get(), &QLocalSocket::disconnected, Socket_.get(), [this] { Settle(); });
        QObject::connect(&Patience_, &QTimer::timeout, &Patience_, [this] { Settle(); });
        Patience_.setSingleShot(true);
        Patience_.start(patience);
        Read();
    }

    bool IsSettled() const { return IsSettled_; }
    bool IsAnswered() const { return IsAnswered_; }

private:
    void Read() {
        if (IsSettled_) {
            return;
        }
        const bool isRequest = ReadTowards(*Socket_, Request(), Said_);
        const bool isWhole = Said_ == Request();
        if (!isRequest || isWhole) {
            Settle();
        }
        // Settled first: the answer may wait, and must not hear itself be asked again.
        if (isWhole) {
            Answer();
        }
    }

    // A copy that was asked but stood still is answered for by then: whoever asked has given up and gone.
    void Answer() {
        constexpr int longest = 100;
        Socket_->write(Consent());
        Socket_->flush();
        // Where the system writes by itself, it tells of it only then.
        if (Socket_->bytesToWrite() > 0) {
            Socket_->waitForBytesWritten(longest);
        }
        IsAnswered_ = Socket_->state() == QLocalSocket::ConnectedState && Socket_->bytesToWrite() == 0;
    }

    void Settle() {
        if (!std::exchange(IsSettled_, true)) {
            Settled_();
        }
    }

    std::function<void()> Settled_;
    bool IsSettled_ = false;
    bool IsAnswered_ = false;
    QByteArray Said_;
    QTimer Patience_;
    std::unique_ptr<QLocalSocket> Socket_;
};

ComeForwardServer::ComeForwardServer(const QString& socketName, std::function<void()> comeForward)
    : ComeForward_(std::move(comeForward)) {
    // What a copy that was killed has left.
    QLocalServer::removeServer(socketName);
    QObject::connect(&Server_, &QLocalServer::newConnection, &Server_, [this] { Accept(); });
    Server_.setSocketOptions(QLocalServer::UserAccessOption);
    Server_.listen(socketName);
}

ComeForwardServer::~ComeForwardServer() = default;

void ComeForwardServer::Accept() {
    constexpr std::size_t most = 16;
    while (Server_.hasPendingConnections()) {
        std::unique_ptr<QLocalSocket> socket(Server_.nextPendingConnection());
        if (Callers_.size() < most) {
            // Settled from the event loop: neither may a socket end in its own signal, nor may it wait for
            // what the window does when it comes forward.
            Callers_.emplace_back(std::move(socket), [this] {
                QMetaObject::invokeMethod(
                    &Server_, [this] { Settle(); }, Qt::QueuedConnection);
            });
        }
    }
}

void ComeForwardServer::Settle() {
    bool comeForward = false;
    for (auto caller = Callers_.begin(); caller != Callers_.end();) {
        comeForward = comeForward || caller->IsAnswered();
        caller = caller->IsSettled() ? Callers_.erase(caller) : std::next(caller);
    }
    if (comeForward) {
        // A copy, for it may end this server.
        const auto call = ComeForward_;
        call();
    }
}

}  // namespace burnwick
