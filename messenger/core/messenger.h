// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "messenger/core/messenger_face.h"
#include "messenger/core/options.h"

namespace oku {

/// The whole messenger without a display: the plugin, its host's services, the models. One object a process.
class Messenger final : public MessengerFace {
    Q_OBJECT

public:
    explicit Messenger(MessengerOptions options, QObject* parent = nullptr);
    ~Messenger() override;

    [[nodiscard]] QString start() override;
    void shutdown() override;
    [[nodiscard]] bool running() const override;
    [[nodiscard]] QString profileDir() const override;

    [[nodiscard]] AccountsFace& accounts() const override;
    [[nodiscard]] RosterFace& roster() const override;
    [[nodiscard]] TalkFace& talk() const override;
    [[nodiscard]] CardsFace& cards() const override;
    [[nodiscard]] NewsFace& news() const override;
    [[nodiscard]] WindowsFace& windows() const override;
    [[nodiscard]] DialogsFace& dialogs() const override;
    [[nodiscard]] WireFace& wire() const override;
    [[nodiscard]] TransfersFace& transfers() const override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

/// How a messenger of this installation starts: with the plugin that was installed with the program, and the key ring
/// of the user's session. Needs an application object.
MessengerOptions installedOptions();

}  // namespace oku
