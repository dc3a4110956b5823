// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/news/news_on_host.h"

#include <QCoreApplication>

#include "messenger/core/accounts/accounts.h"
#include "messenger/core/news/personal_news.h"
#include "messenger/core/news/popups.h"

namespace oku {
namespace {

class NewsOnHost final : public NewsFace {
public:
    explicit NewsOnHost(const NewsParts& parts) : parts_(parts) {
        connect(&parts_.news, &PersonalNews::tune, this, &NewsFace::tuneReceived);
        connect(&parts_.news, &PersonalNews::mood, this, &NewsFace::moodReceived);
        connect(&parts_.news, &PersonalNews::location, this, &NewsFace::locationReceived);
        connect(&parts_.popups, &Popups::shown, this, &NewsFace::popupShown);
        connect(&parts_.popups, &Popups::gone, this, &NewsFace::popupGone);
    }

    QString publishTune(const QString& account, const Tune& tune) override { return publish(account, tune); }
    QString publishMood(const QString& account, const Mood& mood) override { return publish(account, mood); }
    QString publishLocation(const QString& account, const Location& location) override {
        return publish(account, location);
    }

    QList<Popup> popups() const override { return parts_.popups.open(); }
    QString openPopup(int number) override { return parts_.popups.click(number) ? QString() : noPopup(); }
    QString closePopup(int number) override { return parts_.popups.close(number) ? QString() : noPopup(); }

private:
    template <typename Value>
    QString publish(const QString& account, const Value& value) {
        return parts_.accounts.with(account, [&](AccountEntry& entry) { return parts_.news.publish(entry, value); });
    }
    static QString noPopup() { return QCoreApplication::translate("News", "Nie ma takiego powiadomienia."); }

    NewsParts parts_;
};

}  // namespace

std::unique_ptr<NewsFace> newsOnHost(const NewsParts& parts) { return std::make_unique<NewsOnHost>(parts); }

}  // namespace oku
