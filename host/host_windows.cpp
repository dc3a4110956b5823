// Menus, pages, windows, icons and directories of the host.
#include <algorithm>
#include <array>

#include "host/host.h"
#include "host/oku/graphics.h"
#include "host/oku/menu.h"
#include "host/oku/windows.h"
#include "host/record.h"
#include "host/util/format.h"

namespace {

constexpr std::size_t kDirectoryCapacity = 261;

/// An item without a text of its own has a null pointer there, not an empty text.
const char16_t* textOrNull(const std::u16string& text) { return text.empty() ? nullptr : text.c_str(); }

OKU_MENU_RECORD menuRecord(const MenuItem& item) {
    auto record = makeRecord<OKU_MENU_RECORD>();
    record.id = textOrNull(item.id);
    record.parent = textOrNull(item.parent);
    record.caption = textOrNull(item.caption);
    record.flags = item.flags;
    record.order = item.order;
    record.icon = textOrNull(item.icon);
    record.callback = item.callback;
    record.context = item.context;
    return record;
}

}  // namespace

void Host::menuAdd(const MenuItem& item) const {
    auto record = menuRecord(item);
    record.module = module_;
    call(u"OKU/Menu/Add", toWord(&record));
}

void Host::menuModify(const MenuItem& item) const {
    auto record = menuRecord(item);
    call(u"OKU/Menu/Modify", toWord(&record));
}

OKU_WORD Host::addOptionsPage(const std::u16string& id, const std::u16string& caption, CallbackTarget target) const {
    auto record = makeRecord<OKU_OPTIONS_PAGE>();
    record.id = id.c_str();
    record.parent = u"OKU/Group/Network";
    record.caption = caption.c_str();
    record.iconName = u"XMPP/MainIcon16";
    record.callback = target.callback;
    record.context = target.context;
    call(u"OKU/AddOptionsPage", module_, toWord(&record));
    return record.icon;
}

void Host::addPropertiesPage(const std::u16string& id, std::uint32_t netId, CallbackTarget target) const {
    auto record = makeRecord<OKU_PROPERTIES_PAGE>();
    record.id = id.c_str();
    record.caption = u"Właściwości";
    record.value32 = 7;
    record.value36 = -1000;
    record.callback = target.callback;
    record.context = target.context;
    record.pfClass = kProtocolClass;
    record.netId = netId;
    call(u"OKU/PropertiesStaticPageAdd", toWord(&record));
}

void Host::statusWindowPrepare(std::span<const std::uint32_t> statuses, std::uint32_t netId,
                               CallbackTarget target) const {
    auto record = makeRecord<OKU_STATUS_WINDOW_PREPARE>();
    record.title = u"XMPP / ustaw status...";
    record.statuses = statuses.data();
    record.statusCount = static_cast<std::uint32_t>(statuses.size());
    record.value28 = 1024;
    record.pfClass = kProtocolClass;
    record.netId = netId;
    record.callback = target.callback;
    record.context = target.context;
    call(u"OKU/StatusWND/Prepare", toWord(&record));
}

void Host::statusWindowShow(std::uint32_t netId, const std::u16string& description, std::uint32_t status,
                            std::uint32_t protect) const {
    auto record = makeRecord<OKU_STATUS_WINDOW_SHOW>();
    record.description = description.c_str();
    record.status = status;
    record.pfClass = kProtocolClass;
    record.netId = netId;
    record.value36 = 1;
    record.protect = protect;
    call(u"OKU/StatusWND/Show", toWord(&record));
}

void Host::statusWindowSetTexts(const std::u16string& title, const std::u16string& header,
                                const std::u16string& account, OKU_WORD window) const {
    auto record = makeRecord<OKU_STATUS_WINDOW_TEXTS>();
    record.title = title.c_str();
    record.header = header.c_str();
    record.account = account.c_str();
    record.window = window;
    call(u"OKU/StatusWND/SetTexts", toWord(&record));
}

void Host::messageBox(const std::u16string& text, const std::u16string& title, BoxStyle style, OKU_WORD owner) const {
    auto record = makeRecord<OKU_MESSAGE_BOX>();
    record.text = text.c_str();
    record.title = title.c_str();
    record.style = static_cast<std::uint32_t>(style);
    record.owner = owner;
    call(u"UI/MessageBox", toWord(&record));
}

void Host::signalBusyness(bool busy) const { call(u"MyVCard/SignalBusyness", busy ? 1 : 0); }

void Host::createIconClass(const std::u16string& name, const char16_t* fallbackImage) const {
    auto record = makeRecord<OKU_ICON_CLASS>();
    record.name = name.c_str();
    record.value52 = 3;
    call(u"OKU/Graph/ICCreate", toWord(&record));
    call(u"OKU/Graph/AddIC", toWord(name), toWord(fallbackImage));
}

void Host::loadStatusIcons(const std::u16string& baseName, std::span<const std::uint32_t> statuses,
                           std::span<const std::uint32_t> second) const {
    auto record = makeRecord<OKU_ICON_SET>();
    record.value16 = 2;
    record.statuses = statuses.data();
    record.statusCount = static_cast<std::uint32_t>(statuses.size());
    record.second = second.data();
    record.secondCount = static_cast<std::uint32_t>(second.size());
    record.value52 = 1;
    record.baseName = baseName.c_str();
    record.pfClass = kProtocolClass;
    call(u"OKU/Graph/LoadIS", toWord(&record));
}

void Host::loadIcon(const std::u16string& name, int resource) const {
    auto record = makeRecord<OKU_ICON_LOAD>();
    record.name = name.c_str();
    record.resource = resource;
    record.module = module_;
    call(u"OKU/Graph/Load", toWord(&record));
}

HostDirectories Host::directories() const {
    std::array<char16_t, kDirectoryCapacity> buffer{};
    auto record = makeRecord<OKU_DIRECTORY>();
    record.buffer = buffer.data();
    record.capacity = kDirectoryCapacity;
    record.subdirectory = u"config";
    // One record and one buffer serve both calls, so a host that fills the buffer only once gives the same twice.
    const auto ask = [&](const char16_t* service) {
        call(service, toWord(&record));
        return std::u16string(buffer.begin(), std::find(buffer.begin(), buffer.end() - 1, u'\0'));
    };
    HostDirectories directories;
    directories.cache = ask(u"OKU/Info/GetCacheDir");
    directories.profile = ask(u"OKU/Info/GetProfileDir");
    return directories;
}
