// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <QMap>
#include <QObject>

#include "host/oku/base.h"
#include "messenger/core/values/alarm.h"
#include "messenger/core/values/windows.h"

namespace oku {

class ServiceRegistry;

/// "UI/MessageBox", and the messenger's own questions, which are shown the same way. A box of the plugin holds the call
/// that opened it on the stack until it is answered, with an event loop of its own. What a web site asks comes when
/// somebody else wants it to, so nobody may be there: it is answered with no after 60 s. As anybody's server may ask as
/// often as it likes, who got a no is not asked again for 2 minutes: all that such a site asks meanwhile gets a no at
/// once. What others send may give a call any number of notices to show, and everything waits for each: from the 11th
/// of one title on they are answered unseen. Questions are always asked.
class MessageBoxes : public QObject {
    Q_OBJECT

public:
    explicit MessageBoxes(ServiceRegistry& services, SetAlarm alarms = {}, QObject* parent = nullptr);

    /// A question of the messenger itself; nothing waits for it. `answer` gets `no` when the boxes are closed.
    int ask(const QString& title, const QString& text, std::function<void(BoxButton)> answer);
    /// False when there is no such box or the button does not fit.
    bool answer(int number, BoxButton button);
    [[nodiscard]] QList<MessageBox> open() const;
    /// Answers all boxes with OK or no. From then on new ones are answered at once, until they are allowed again.
    void close();
    void allow() { closed_ = false; }
    /// The call into the plugin that may have opened boxes has returned.
    void endCall();

signals:
    void opened(const oku::MessageBox& box);
    void closed(int number);
    /// Its time was over, and it got its answer from here.
    void unanswered(const oku::MessageBox& box);
    /// A web site asked again too early, and got a no. Told once for all that ask in these 2 minutes.
    void refusedUnasked();
    /// The call that has returned had so many more notices of this title, which nobody saw.
    void leftOut(const QString& title, int count);
    /// The first box of the plugin was opened, or its last was answered: true while one holds the plugin.
    void pluginHeld(bool held);

private:
    struct Open {
        MessageBox box;
        std::function<void(BoxButton)> answer;
    };

    OKU_WORD show(OKU_WORD param);
    int add(MessageBox box, std::function<void(BoxButton)> answer);
    void giveUp(int number);
    bool refusesUnasked();
    void restFromWebSites();

    SetAlarm alarms_;
    std::map<int, Open> boxes_;
    int lastNumber_ = 0;
    int held_ = 0;
    bool closed_ = false;
    QMap<QString, int> noticesOfCall_;  ///< by title
    std::unique_ptr<QObject> rest_;     ///< while web sites are not asked about
    bool restTold_ = false;
};

}  // namespace oku
