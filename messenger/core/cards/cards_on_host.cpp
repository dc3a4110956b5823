// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/cards/cards_on_host.h"

#include "messenger/core/accounts/accounts.h"
#include "messenger/core/cards/contact_cards.h"
#include "messenger/core/cards/contact_pictures.h"
#include "messenger/core/cards/own_cards.h"
#include "messenger/core/cards/own_picture.h"
#include "messenger/core/values/jid_text.h"

namespace oku {
namespace {

class CardsOnHost final : public CardsFace {
public:
    explicit CardsOnHost(const CardParts& parts) : parts_(parts) {
        connect(&parts_.contactCards, &ContactCards::received, this, &CardsFace::cardReceived);
        connect(&parts_.contactCards, &ContactCards::failed, this, &CardsFace::cardFailed);
        connect(&parts_.contactCards, &ContactCards::progressed, this, &CardsFace::progressed);
        connect(&parts_.ownCards, &OwnCards::cardFetched, this, &CardsFace::ownCardReceived);
        connect(&parts_.ownCards, &OwnCards::cardStored, this, &CardsFace::ownCardStored);
        connect(&parts_.ownCards, &OwnCards::cardWouldLose, this, &CardsFace::ownCardWouldLose);
        connect(&parts_.ownCards, &OwnCards::cardFailed, this, &CardsFace::ownCardFailed);
        connect(&parts_.ownCards, &OwnCards::picturePublished, this, &CardsFace::ownPicturePublished);
        connect(&parts_.ownCards, &OwnCards::pictureRefused, this, &CardsFace::ownPictureRefused);
        connect(&parts_.ownCards, &OwnCards::progressed, this, &CardsFace::progressed);
        connect(&parts_.ownCards, &OwnCards::busyChanged, this, &CardsFace::busyChanged);
        connect(&parts_.ownPicture, &OwnPictureFile::changed, this, &CardsFace::ownPictureChanged);
        connect(&parts_.ownPicture, &OwnPictureFile::failed, this, &CardsFace::ownPictureFailed);
        connect(&parts_.pictures, &ContactPictures::changed, this, &CardsFace::pictureChanged);
    }

    QString requestCard(const QString& account, const QString& jid) override {
        return parts_.accounts.with(account, [&](AccountEntry& entry) { return parts_.contactCards.ask(entry, jid); });
    }

    QString requestOwnCard(const QString& account) override {
        return parts_.accounts.with(account, [&](AccountEntry& entry) { return parts_.ownCards.fetchCard(entry); });
    }

    QString storeOwnCard(const QString& account, const CardFields& changes, bool agreed) override {
        return parts_.accounts.with(
            account, [&](AccountEntry& entry) { return parts_.ownCards.storeCard(entry, changes, agreed); });
    }

    OwnPicture ownPicture() const override { return parts_.ownPicture.picture(); }

    QString setOwnPicture(const QString& path) override { return parts_.ownPicture.setFrom(path); }

    QString removeOwnPicture() override { return parts_.ownPicture.remove(); }

    QString publishOwnPicture(const QString& account) override {
        return parts_.accounts.with(account,
                                    [&](AccountEntry& entry) { return parts_.ownCards.publishPicture(entry); });
    }

    QString fetchOwnPicture(const QString& account) override {
        return parts_.accounts.with(account, [&](AccountEntry& entry) { return parts_.ownCards.fetchPicture(entry); });
    }

    ContactPicture picture(const QString& account, const QString& jid) const override {
        const auto* entry = parts_.accounts.inPlugin(account);
        return entry ? parts_.pictures.picture(entry->key, bareJid(jid)) : ContactPicture();
    }

private:
    CardParts parts_;
};

}  // namespace

std::unique_ptr<CardsFace> cardsOnHost(const CardParts& parts) { return std::make_unique<CardsOnHost>(parts); }

}  // namespace oku
