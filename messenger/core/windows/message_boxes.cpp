// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/windows/message_boxes.h"

#include <QEventLoop>
#include <utility>

#include "host/oku/windows.h"
#include "messenger/core/boundary/nested_loop.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"

namespace oku {
namespace {

BoxStyle styleOf(std::uint32_t style) {
    switch (style) {
        case OKU_BOX_ERROR:
            return BoxStyle::error;
        case OKU_BOX_WARNING:
            return BoxStyle::warning;
        case OKU_BOX_QUESTION:
            return BoxStyle::question;
        default:
            return BoxStyle::information;
    }
}

BoxButton defaultButton(BoxStyle style) { return style == BoxStyle::question ? BoxButton::no : BoxButton::ok; }

constexpr int kMostNotices = 10;      // of one title, in one call into the plugin
constexpr int kWebSitePatience = 60;  // seconds
constexpr int kWebSiteRest = 120;     // seconds

/// The question of a web site (XEP-0070) is told by its title, which the plugin gives to no other box.
bool isOfWebSite(const OKU_MESSAGE_BOX& record) {
    return record.style == OKU_BOX_QUESTION && wideText(record.title) == QLatin1String("Autoryzacja OpenID");
}

}  // namespace

MessageBoxes::MessageBoxes(ServiceRegistry& services, SetAlarm alarms, QObject* parent)
    : QObject(parent), alarms_(alarms ? std::move(alarms) : SetAlarm(&systemAlarm)) {
    services.provide(u"UI/MessageBox", [this](OKU_WORD param, OKU_WORD) { return show(param); });
}

int MessageBoxes::ask(const QString& title, const QString& text, std::function<void(BoxButton)> answer) {
    if (closed_) {
        answer(BoxButton::no);
        return 0;
    }
    return add({0, text, title, BoxStyle::question, false, 0}, std::move(answer));
}

int MessageBoxes::add(MessageBox box, std::function<void(BoxButton)> answer) {
    box.number = ++lastNumber_;
    boxes_.emplace(box.number, Open{box, std::move(answer)});
    emit opened(box);
    return box.number;
}

bool MessageBoxes::answer(int number, BoxButton button) {
    const auto found = boxes_.find(number);
    if (found == boxes_.end()) return false;
    const bool isQuestion = found->second.box.style == BoxStyle::question;
    if (isQuestion == (button == BoxButton::ok)) return false;
    const auto handler = std::move(found->second.answer);
    boxes_.erase(found);
    emit closed(number);
    handler(button);
    return true;
}

void MessageBoxes::giveUp(int number) {
    const auto found = boxes_.find(number);
    if (found == boxes_.end()) return;
    const MessageBox box = found->second.box;
    answer(number, defaultButton(box.style));
    emit unanswered(box);
}

QList<MessageBox> MessageBoxes::open() const {
    QList<MessageBox> list;
    for (const auto& [number, open] : boxes_) list.append(open.box);
    return list;
}

void MessageBoxes::close() {
    closed_ = true;
    for (const MessageBox& box : open()) answer(box.number, defaultButton(box.style));
}

OKU_WORD MessageBoxes::show(OKU_WORD param) {
    const auto* record = recordAt<OKU_MESSAGE_BOX>(param);
    if (!record) return 0;
    const BoxStyle style = styleOf(record->style);
    BoxButton result = defaultButton(style);
    const int seconds = isOfWebSite(*record) ? kWebSitePatience : 0;
    if (closed_ || (seconds > 0 && refusesUnasked())) return static_cast<OKU_WORD>(result);
    if (style != BoxStyle::question && ++noticesOfCall_[wideText(record->title)] > kMostNotices)
        return static_cast<OKU_WORD>(result);
    QEventLoop loop;
    bool answered = false;
    if (held_++ == 0) emit pluginHeld(true);
    // The answer may come from a slot of opened(), before the loop runs.
    const MessageBox box{0, wideText(record->text), wideText(record->title), style, true, seconds};
    const int number = add(box, [&](BoxButton button) {
        result = button;
        answered = true;
        loop.quit();
    });
    std::unique_ptr<QObject> alarm;
    if (!answered && seconds > 0) alarm = alarms_(seconds * 1000, [this, number] { giveUp(number); });
    if (!answered) runNested(loop);
    if (--held_ == 0) emit pluginHeld(false);
    if (seconds > 0 && result != BoxButton::yes) restFromWebSites();
    return static_cast<OKU_WORD>(result);
}

void MessageBoxes::endCall() {
    const auto noticesOfCall = std::exchange(noticesOfCall_, {});
    for (auto title = noticesOfCall.begin(); title != noticesOfCall.end(); ++title)
        if (title.value() > kMostNotices) emit leftOut(title.key(), title.value() - kMostNotices);
}

bool MessageBoxes::refusesUnasked() {
    if (!rest_) return false;
    if (!std::exchange(restTold_, true)) emit refusedUnasked();
    return true;
}

void MessageBoxes::restFromWebSites() {
    restTold_ = false;
    rest_ = alarms_(kWebSiteRest * 1000, [this] {
        // It rings just now.
        if (rest_) rest_.release()->deleteLater();
    });
}

}  // namespace oku
