// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>

#include "host/oku/transfer.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/transfers/transfers_on_host.h"
#include "tests/messenger/core/stage.h"

namespace oku::test {

/// A host that is logged in, with bob on the list, and the plugin's half of transfers. Time passes when the test says
/// so.
class TransferStage : public Stage {
protected:
    void SetUp() override;
    void TearDown() override;

    /// The plugin asks about an offered file; gives the host's answer.
    OKU_WORD ask(const QString& name, const QString& size = QStringLiteral("5"),
                 const QString& sender = QStringLiteral("bob@example.org"));
    /// Answers the offer that comes next, from the event loop.
    void answerNext(OfferReply reply);
    /// All that waits for a time to pass has waited long enough.
    void ringAlarms();
    /// What began to wait last has.
    void ringNewestAlarm();
    [[nodiscard]] std::size_t alarmsSet() const { return alarms_.size(); }
    /// How many milliseconds each of these waits, in the order in which they began.
    [[nodiscard]] QList<int> alarmTimes() const;

    /// The plugin opens a window for a contact of the account; gives its handle.
    OKU_WORD openWindow(const char16_t* contact = u"bob@example.org", int whose = 0);
    /// The plugin writes to the window, from whatever thread calls this.
    void write(OKU_WORD window, std::uint32_t mask, const std::function<void(OKU_FT_UPDATE_RECORD&)>& fill) const;
    void writeStatus(OKU_WORD window, const char16_t* text) const;
    void writePosition(OKU_WORD window, std::uint64_t position) const;
    void run(OKU_WORD window, std::uint64_t size) const;
    void drop(OKU_WORD window);
    [[nodiscard]] Transfer transfer(OKU_WORD window) const;
    [[nodiscard]] QString folder(const char* below = "") const;

    std::unique_ptr<TransfersFace> face;
    QList<Transfer> told;
    QList<FileOffer> offers;
    QList<std::pair<int, OfferReply>> closed;
    OKU_FT_INIT_RECORD init;  ///< of the window that was opened last
    QString path;             ///< that the host gave with its last answer
    std::vector<std::uint32_t> windowEvents;
    QStringList opened;   ///< addresses that the system's program was given
    bool canOpen = true;  ///< there is such a program

private:
    struct Alarm {
        int milliseconds;
        std::function<void()> ring;
    };
    std::map<int, Alarm> alarms_;
    int lastAlarm_ = 0;
};

}  // namespace oku::test
