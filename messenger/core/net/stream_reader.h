// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>

#include "messenger/core/net/element_scanner.h"
#include "messenger/core/net/stream_fault.h"

namespace oku::net {

/// Bytes to hand to the plugin, and what they tell the socket layer.
struct Piece {
    QByteArray bytes;
    std::optional<StreamFault> fault;  ///< the piece holds a stream error or a refused login
    bool ends = false;                 ///< the piece begins with the stream's closing tag
};

/// Cuts what comes in clear into whole elements: the plugin checks all bytes that it keeps again with each piece, so
/// a large stanza that reached it in parts would be read over and over.
///
/// - The stream's closing tag gets a piece of its own, for the plugin cannot read a piece that holds one.
/// - In clear nothing behind the answer to STARTTLS is handed out: it was sent by who knows whom, and must not be taken
///   for what the server says under TLS. Nor is what stands behind the stream's closing tag, where nothing looks for
///   such an answer. An end tag of another name closes nothing: what stands behind it is handed out as it comes.
class StreamReader {
public:
    StreamReader(qsizetype holdLimit, bool inClear) : limit_(holdLimit), inClear_(inClear) {}

    /// Takes bytes, gives what is complete.
    QList<Piece> add(const QByteArray& bytes);

    /// Gives up waiting: what is kept back, to be handed out as it is. The rest of that element then passes as it
    /// comes.
    QByteArray release();

    /// Bytes that are kept back: of an incomplete element, or those behind the answer to STARTTLS.
    qsizetype held() const { return kept_.size(); }

    /// The answer to STARTTLS was handed out: no more can be read in clear.
    bool proceedSeen() const { return proceedSeen_; }

private:
    struct Cut;

    bool onElement(Cut& cut, qsizetype end);
    void onEnd(Cut& cut, qsizetype end);

    ElementScanner scanner_;
    QByteArray kept_;
    qsizetype limit_;
    bool inClear_;
    bool passing_ = false;        ///< within an element whose first bytes were released
    bool ended_ = false;          ///< a closing tag was seen, whatever its name
    bool closedInClear_ = false;  ///< the stream's own, in clear
    bool proceedSeen_ = false;
};

}  // namespace oku::net
