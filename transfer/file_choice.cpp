// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "transfer/file_choice.h"

#include <utility>

#include "host/oku/transfer.h"
#include "host/record.h"
#include "host/services/file_chooser.h"
#include "plugin/boundary.h"

namespace protolink {

namespace {

/// Outlives the plugin's state, which is made later.
LiveObjects<FileChoice::Pending> g_openChoosers;

}  // namespace

OKU_WORD FileChoice::onInitSendFile(OKU_WORD contactRecord) {
    const auto* contact = readRecord<OKU_CONTACT_RECORD>(contactRecord);
    if (!contact || !contact->id) return 0;
    auto pending = std::make_unique<Pending>(Pending{*this, readText(contact->id)});
    const OKU_WORD context = g_openChoosers.add(*pending);
    pending_.emplace(context, std::move(pending));
    if (FileChooser(client_.host).open({onChoice, context})) return 1;
    forget(context);
    return 0;
}

OKU_WORD OKU_CALL FileChoice::onChoice(OKU_WORD choiceRecord, OKU_WORD, OKU_WORD context) noexcept {
    return atBoundary([&]() -> OKU_WORD {
        const Pending* const pending = g_openChoosers.find(context);
        const auto* choice = readRecord<OKU_FILE_CHOICE>(choiceRecord);
        if (!pending || !choice) return 0;
        FileChoice& owner = pending->owner;
        const std::u16string contact = pending->contact;
        owner.forget(context);
        if (choice->kind == OKU_FILE_CHOSEN && choice->path) owner.sessions_.SendFile(contact, readText(choice->path));
        return 0;
    });
}

void FileChoice::forget(OKU_WORD context) {
    g_openChoosers.remove(context);
    pending_.erase(context);
}

void FileChoice::end() {
    while (!pending_.empty()) forget(pending_.begin()->first);
}

}  // namespace protolink
