// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include "messenger/core/cards/cards_on_host.h"
#include "tests/messenger/core/fake_picture_reader.h"
#include "tests/messenger/core/stage.h"

namespace oku::test {

/// A host with the face of cards, whose signals are noted as lines, and a reader of pictures that does what it is told.
class CardsStage : public Stage {
protected:
    CardsStage();
    void TearDown() override;

    void begin();
    /// What was told since the last time.
    QStringList take() { return std::exchange(told, {}); }
    QStringList took(const char* line) { return {QString::fromUtf8(line)}; }
    /// What the plugin was asked for since the last time.
    std::string asked();

    // As the plugin speaks of a card.
    OKU_WORD cardStatus(OKU_WORD token, const char16_t* text, std::uint32_t state = 0);
    OKU_WORD row(OKU_WORD token, std::uint32_t kind, const QString& label, const QString& value);
    OKU_WORD ownField(OKU_WORD token, const char16_t* key, const QString& value);
    OKU_WORD ownStatus(OKU_WORD token, const char16_t* text);
    /// The buffer behind the call; it holds "?" before.
    std::u16string askedField(OKU_WORD token, const char16_t* key, std::uint32_t capacity = 1024);
    void box(std::uint32_t style, const char16_t* text);
    /// A file of the plugin's cache.
    QString cached(const QString& name, const QByteArray& content) const;
    OKU_WORD announce(const char16_t* jid, const QString& path);
    /// The id of the messenger's last request on the stream.
    QString lastQuery() const;
    void answerQuery(const QString& content, const char* type = "result");
    /// The connection ends, and the plugin has learnt of it.
    void loseConnection();

    std::shared_ptr<FakePictureReader> reader = std::make_shared<FakePictureReader>();
    std::unique_ptr<CardsFace> cards;
    QStringList told;
    std::vector<OKU_WORD> tokens;  ///< of the requests that reached the plugin
    const QString me = QStringLiteral("alice@example.org");

private:
    void note();
};

}  // namespace oku::test
