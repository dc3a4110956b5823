// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// One account's stream between a host and a server, with compression begun.
#pragma once

#include <string>
#include <vector>

#include "stream/stream_input.h"
#include "stream/stream_output.h"
#include "tests/support/compression.h"
#include "tests/support/fake_platform.h"
#include "tests/support/recording_host.h"
#include "tests/support/text.h"

namespace compressed {

using namespace protolink;

using Texts = std::vector<std::string>;

struct Control : ConnectionControl {
    OKU_WORD disconnect(bool closeSocket) override {
        ends.push_back(closeSocket);
        return 1;
    }
    void expectReconnection() override {}
    std::vector<bool> ends;
};

struct Listener : StreamListener {
    void forgetSession() override {}
    void onStateReset() override {}
    void onSocketConnected() override {}
    void onSocketClosed() override {}
    void publishStatus(Status, const std::u16string&) override {}
    void routeElements(XmlSequence& batch) override {
        ++batches;
        xmlElement element;
        while (batch.next(element)) elements.push_back(harness::toUtf8(element.GetXML(1)));
    }
    std::size_t batches = 0;
    std::vector<std::string> elements;
};

class CompressedStream {
public:
    explicit CompressedStream(bool started = true) : client({u"r", u"c", u"XMPP"}, Host(host.table(), host.module)) {
        harness::world() = harness::FakeWorld();
        host.sockets["XMPP/Socket/1"] = {};
        host.protocols[1].flags = &client.flags;
        host.onEvent = [this](const harness::Event& event) {
            if (event.category == harness::Event::Category::Sent) sent.push_back(event.data);
            if (!event.line.head.starts_with("log ")) return;
            const bool waits = event.line.texts[0].text.find("waiting for next part") != std::string::npos;
            (waits ? waitings : logs).push_back(harness::render(event.line));
        };
        output.attach(control);
        client.netId = 1;
        client.socketName = u"XMPP/Socket/1";
        client.flags = FLAG_CONNECTED | FLAG_AUTHORIZED | FLAG_COMPRESSED;
        if (started) zip.zStart();
    }

    void receive(std::string bytes) {
        NL_RECEIVED piece{sizeof(NL_RECEIVED), static_cast<std::int32_t>(bytes.size()), bytes.data()};
        input.onReceive(piece);
    }
    /// The socket has closed and connected again, and compression begins anew.
    void reconnect() {
        zip.zEnd();
        input.resetPartialInput();
        input.freeZInput();
        zip.zStart();
        server = harness::Compression();
        host.compression.clear();
    }

    harness::RecordingHost host;
    harness::Compression server;
    CClientClass client;
    CZipStream zip;
    StreamOutput output{client, zip};
    Control control;
    Listener listener;
    StreamInput input{client, zip, control, listener};
    std::vector<std::string> sent;
    std::vector<std::string> logs;
    std::vector<std::string> waitings;  // for the rest of a text that is not valid yet
};

}  // namespace compressed
