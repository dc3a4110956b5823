// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace oku::net {

/// Finds where the top-level elements of an XMPP stream (RFC 6120) begin and end, reading each byte once.
///
/// It counts depth and checks nothing that a parser checks better. The stream's opening tag is complete in itself, so
/// that a stream that starts anew after TLS or a login needs no word from outside.
class ElementScanner {
public:
    enum class Mark {
        None,     ///< all bytes are read
        Open,     ///< a '<' between elements was read
        Header,   ///< the end of the stream's opening tag
        Element,  ///< the end of a top-level element; name() tells which
        End       ///< the end of a closing tag that closes no element: the stream's own
    };

    /// Reads on from `position`, and stops with `position` behind the next mark.
    Mark next(QByteArrayView bytes, qsizetype& position);

    /// What was read holds no incomplete element. Also true once the text is no XML, as waiting is of no use then.
    bool atRest() const { return broken_ || (state_ == State::Text && depth_ == 0); }
    bool broken() const { return broken_; }

    /// Qualified name of the top-level element that is being read or was read last, cut to 64 bytes.
    const QByteArray& name() const { return name_; }

private:
    enum class State { Text, Opened, Name, Tag, Quoted, Slash, EndTag, Bang, Comment, CData, Instruction };

    qsizetype skipStretch(QByteArrayView bytes, qsizetype from);
    Mark step(char byte);
    Mark opened(char byte);
    Mark inTag(char byte);
    Mark tagEnds(bool selfClosing);
    Mark endTagEnds();
    void bang(char byte);
    void skipTo(char closing, int repeats, char byte);
    Mark fail();

    State state_ = State::Text;
    qint64 depth_ = 0;
    int matched_ = 0;  ///< characters of a section's start or end that were seen in a row
    char quote_ = '"';
    bool broken_ = false;
    QByteArray name_;
    QByteArray section_;  ///< what follows "<!", until it is known what it opens
};

}  // namespace oku::net
