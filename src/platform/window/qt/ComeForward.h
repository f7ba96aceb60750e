#pragma once

#include <QByteArray>
#include <QDeadlineTimer>
#include <QLocalServer>
#include <functional>
#include <list>

namespace burnwick {

// Asks the copy that listens under this name. True when it says that it comes forward, until `deadline`.
bool AskToComeForward(const QString& socketName, QDeadlineTimer deadline);

// Hears the copies that ask this one to come forward. Whoever says anything else, or nothing, is cut off.
class ComeForwardServer {
public:
    ComeForwardServer(const QString& socketName, std::function<void()> comeForward);
    ComeForwardServer(const ComeForwardServer&) = delete;
    ComeForwardServer& operator=(const ComeForwardServer&) = delete;
    ~ComeForwardServer();

private:
    class Caller;

    void Accept();
    void Settle();

    std::function<void()> ComeForward_;
    QLocalServer Server_;
    std::list<Caller> Callers_;  // their sockets are the server's, and end before it
};

}  // namespace burnwick
