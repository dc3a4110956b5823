// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/services/file_chooser.h"

#include "host/oku/transfer.h"
#include "host/record.h"

namespace protolink {

bool FileChooser::open(CallbackTarget target) const {
    auto record = makeRecord<OKU_FILE_CHOOSER>();
    record.filter =
        u"Wszystkie pliki (*.*)|*.*|Grafika|*.jpg;*.jpe*;*.gif;*.png;*.bmp;*.psd;*.psp*|"
        u"Archiwa|*.zip;*.rar;*.7z;*.gz;*.tar;*.bz2||";
    record.flags = 0x881A00;
    record.callback = target.callback;
    record.context = target.context;
    record.module = host_.module();
    return host_.call(u"UI/FileChooser", toWord(&record)) != 0;
}

}  // namespace protolink
