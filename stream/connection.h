// One account's socket from the first connect to the last close.
#pragma once

#include <cstdint>
#include <string>

#include "host/oku/netlib.h"
#include "plugin/client_class.h"
#include "stream/connection_control.h"
#include "stream/stream_input.h"
#include "stream/stream_listener.h"
#include "stream/stream_output.h"
#include "stream/zip_stream.h"

class Connection final : public ConnectionControl {
public:
    Connection(CClientClass& client, CZipStream& zip, StreamOutput& output, StreamListener& listener,
               OKU_HANDLER reconnectTick);

    StreamInput& input() { return input_; }

    /// The one door to connecting and disconnecting. The third argument is accepted and read by nobody.
    OKU_WORD setStatus(Status status, const std::u16string& description, OKU_WORD flagsWord);
    void connect();
    OKU_WORD disconnect(bool closeSocket) override;
    /// Cancels the reconnection timer if it runs.
    void dropReconnection();
    void expectReconnection() override { noReconnect = 0; }
    /// The next close is final: no reconnection in 3 seconds follows it.
    void forbidReconnection() { noReconnect = 1; }
    /// Sends the opening of the stream, again at each restart. Returns the send's result.
    std::int32_t sendStreamHeader();
    /// Returns the account to its unconnected form.
    void resetState();

    // The host's events. `data` is the word that came with a socket's event.
    OKU_WORD onSocketEvent(OKU_WORD eventRecord, OKU_WORD data);
    OKU_WORD onKeepaliveTimer(OKU_WORD timerEvent);
    OKU_WORD onReconnectTimer(OKU_WORD timerEvent);
    void onKeepaliveTick();
    void onReconnectTick();

    std::uint32_t noReconnect = 0;
    std::uint32_t retryCount = 0;    // attempts in a row
    std::uint32_t registerMode = 0;  // this connection exists to register a new account
    std::uint32_t avatarEnabled = 0;

private:
    void onDestroyed();
    void onConnected();
    void onClosed(OKU_WORD data);
    OKU_WORD onReceived(OKU_WORD data);
    void onTlsState(OKU_WORD data);
    OKU_WORD onCertificateCheck();
    void decideOnReconnection(OKU_WORD data);
    void startReconnectTimer(std::uint32_t milliseconds);
    void cancelReconnectTimer();
    std::u16string reconnectTimerName() const;
    void sendPing();
    void resetDeadConnection();

    CClientClass& client_;
    CZipStream& zip_;
    StreamOutput& output_;
    StreamListener& listener_;
    OKU_HANDLER reconnectTick_;
    StreamInput input_;
    Status prevStatus_{};  // what the reconnection restores
    bool reconnectPending_ = false;
};
