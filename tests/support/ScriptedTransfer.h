#pragma once
#include "tests/support/ScriptedNetwork.h"

#include "platform/host/EventLoop.h"

namespace vistrel::support {

/// One transfer over a scripted network: plays its answer piece by piece on the virtual clock.
class ScriptedTransfer : public host::Transfer {
public:
    ScriptedTransfer(ScriptedNetwork& network, host::TransferRequest request,
                     host::TransferClient& client);
    ~ScriptedTransfer() override;
    ScriptedTransfer(const ScriptedTransfer&) = delete;
    ScriptedTransfer& operator=(const ScriptedTransfer&) = delete;

private:
    void beginHop();
    void answerHead();
    void follow();
    void deliverChunk();
    std::size_t nextChunkSize();
    void endOfBody();
    void fail(host::TransferErrorKind kind, const std::string& message);
    void restartTimeout();
    void then(double delay, void (ScriptedTransfer::*step)());
    void stopTimers();

    ScriptedNetwork& network_;
    std::shared_ptr<int> running_;
    host::TransferRequest request_;
    host::TransferClient& client_;
    ScriptedAnswer answer_;
    int hops_ = 0;
    std::size_t delivered_ = 0;
    std::size_t chunk_ = 0;
    host::EventLoop::Token step_ = 0;
    host::EventLoop::Token timeout_ = 0;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}
