// The host's services, typed. A service's name stands in this folder only; the rest of the plugin calls these methods.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "host/oku/contact.h"
#include "host/oku/message.h"
#include "host/oku/netlib.h"
#include "host/oku/protocol.h"
#include "host/oku/table.h"

/// The protocol class that all accounts share, as the host knows it.
inline constexpr char16_t kProtocolClass[] = u"XMPP";

/// The tags of log lines.
namespace tag {
inline constexpr char16_t kGeneral[] = u"XMPP";
inline constexpr char16_t kStream[] = u"XMSC";
inline constexpr char16_t kCompression[] = u"XMCM";
}  // namespace tag

enum class LogLevel : std::int32_t {
    Negotiation = -1,
    Error = 0,
    Warning = 1,
    Reconnect = 2,
    Debug = 5,
    Ping = 6,
};

enum class HookKind : std::uint32_t {
    StreamIn = OKU_HOOK_STREAM_IN,
    StreamOut = OKU_HOOK_STREAM_OUT,
    ContactState = OKU_HOOK_CONTACT_STATE,
    OwnStatus = OKU_HOOK_OWN_STATUS,
    MessageIn = OKU_HOOK_MESSAGE_IN,
    MessageOut = OKU_HOOK_MESSAGE_OUT,
    SessionBound = OKU_HOOK_SESSION_BOUND,
    ConnectionEnded = OKU_HOOK_CONNECTION_ENDED,
    RosterComplete = OKU_HOOK_ROSTER_COMPLETE,
    TypingIn = OKU_HOOK_TYPING_IN,
};

enum class HookPhase : std::uint32_t {
    Notice = OKU_PHASE_NOTICE,
    Before = OKU_PHASE_BEFORE,
    After = OKU_PHASE_AFTER,
};

enum class BoxStyle : std::uint32_t { Error = 0x10, Warning = 0x30, Information = 0x40, Question = 36 };

/// A menu item, as far as the plugin uses one.
struct MenuItem {
    std::u16string id;
    std::u16string parent;
    std::u16string caption;
    std::u16string icon;
    std::uint32_t flags = 0;
    std::int32_t order = 0;
    OKU_HANDLER callback = nullptr;
    OKU_WORD context = 0;
};

/// What an account tells of itself when it registers.
struct ProtocolRegistration {
    std::u16string uuid;
    OKU_HANDLER authorizationHandler = nullptr;
    OKU_HANDLER deleteHandler = nullptr;
    OKU_WORD context = 0;
    const std::uint32_t* flags = nullptr;
};

/// A page or a window whose content is drawn through a callback.
struct CallbackTarget {
    OKU_HANDLER callback = nullptr;
    OKU_WORD context = 0;
};

/// The directories that the host gives, each with its trailing separator as the host wrote it.
struct HostDirectories {
    std::u16string cache;
    std::u16string profile;
};

/// One typed proxy of the host's table. Texts are the caller's and needed only during the call. A service that the
/// host lacks answers 0, which every method turns into its documented default.
class Host {
public:
    Host() = default;
    Host(const OKU_FUNCTION_TABLE* table, OKU_WORD module) : table_(table), module_(module) {}

    /// From now on no call reaches the host: everything answers 0. For an account that has ended while one of its
    /// own calls is still on the stack. A contact list that such a call keeps from being drawn is drawn again.
    void mute();
    OKU_WORD module() const { return module_; }

    // Registrations. A handle of 0 means that the host did not register it.
    /// Registers an account's service under the protocol class, the account's number and a short name.
    OKU_WORD createNetService(std::uint32_t netId, const char16_t* shortName, OKU_HANDLER handler,
                              OKU_WORD context) const;
    void destroyService(OKU_WORD handle) const;
    OKU_WORD addHook(const char16_t* event, OKU_HANDLER handler, OKU_WORD context) const;
    void removeHook(OKU_WORD handle) const;
    OKU_WORD createEvent(const char16_t* name) const;
    void destroyEvent(OKU_WORD event) const;

    // "OKU/Log". A null tag is allowed.
    void log(LogLevel level, const char16_t* tag, const std::u16string& text) const;
    /// A notice that the user must see.
    void logUser(const std::u16string& text) const;

    // Settings, by the store's handle.
    OKU_WORD settingsInit(const std::u16string& path) const;
    void settingsRead(OKU_WORD store) const;
    void settingsWrite(OKU_WORD store) const;
    void settingsDestroy(OKU_WORD store) const;
    /// The value, or `fallback` when the host has none.
    std::int32_t settingsGetInt(OKU_WORD store, const char16_t* key, std::int32_t fallback) const;
    /// A text is cut to what a buffer of the host holds, also when it is the fallback.
    std::u16string settingsGetString(OKU_WORD store, const char16_t* key, const std::u16string& fallback) const;
    void settingsSetInt(OKU_WORD store, const char16_t* key, std::int32_t value) const;
    void settingsSetString(OKU_WORD store, const char16_t* key, const std::u16string& value) const;

    // Timers, by name.
    void timerCreate(const std::u16string& id, std::uint32_t milliseconds, CallbackTarget target, bool oneShot) const;
    /// Destroys a timer with its name as the param.
    void timerDestroy(const std::u16string& id) const;
    /// Destroys a timer with the address of a word that points to its name as the param. The reconnection timer is
    /// cancelled in this shape, and the host takes both.
    void timerDestroyByReference(const std::u16string& id) const;

    // The account towards the host.
    void protocolAdd(const ProtocolRegistration& registration, std::uint32_t& netId) const;
    void protocolDelete(std::uint32_t netId) const;
    /// By value: the address is the account's own, which the host may change by calling back.
    void setProtocolInfo(std::uint32_t netId, std::u16string bareJid, std::u16string userName) const;
    /// Tells the host's listeners what the protocol is doing. A non-zero result in phase 1 is a veto.
    OKU_WORD callProtocolHooks(std::uint32_t netId, HookKind kind, HookPhase phase, OKU_WORD extra = 0,
                               const void* subject = nullptr) const;

    // Menus, pages and windows.
    void menuAdd(const MenuItem& item) const;
    void menuModify(const MenuItem& item) const;
    /// Gives the handle of the icon that the host made for the page, 0 for none; the caller destroys it.
    OKU_WORD addOptionsPage(const std::u16string& id, const std::u16string& caption, CallbackTarget target) const;
    void addPropertiesPage(const std::u16string& id, std::uint32_t netId, CallbackTarget target) const;
    void statusWindowPrepare(std::span<const std::uint32_t> statuses, std::uint32_t netId, CallbackTarget target) const;
    void statusWindowShow(std::uint32_t netId, const std::u16string& description, std::uint32_t status,
                          std::uint32_t protect) const;
    void statusWindowSetTexts(const std::u16string& title, const std::u16string& header, const std::u16string& account,
                              OKU_WORD window) const;
    /// Shows a modal box with one button and waits for it. `owner` is a window's handle, 0 for none.
    void messageBox(const std::u16string& text, const std::u16string& title, BoxStyle style, OKU_WORD owner = 0) const;
    void signalBusyness(bool busy) const;

    // Icons and directories.
    void createIconClass(const std::u16string& name, const char16_t* fallbackImage) const;
    void loadStatusIcons(const std::u16string& baseName, std::span<const std::uint32_t> statuses,
                         std::span<const std::uint32_t> second) const;
    void loadIcon(const std::u16string& name, int resource) const;
    HostDirectories directories() const;

    // Sockets, by name.
    void socketCreate(const std::u16string& name, CallbackTarget target) const;
    void socketConnect(const NL_CONNECT_RECORD& record) const;
    std::int32_t socketSend(const std::u16string& name, const char* data, std::uint32_t length) const;
    void socketStartTls(const std::u16string& name) const;
    OKU_WORD socketClose(const std::u16string& name) const;
    void socketDestroy(const std::u16string& name) const;
    /// The host's own proxy settings; all zero when it has none.
    NL_PROXY_DEFAULTS proxyDefaults() const;

    // The contact list.
    void pauseDrawing();
    void resumeDrawing();
    void deleteAllContacts(std::uint32_t netId) const;
    void setAllOffline(std::uint32_t netId) const;
    /// Adds or updates a contact and gives it its icon. The record's handle is filled by the host.
    void addContact(OKU_CONTACT_ADD& record) const;
    OKU_WORD findContact(const OKU_CONTACT_ADD& record) const;
    void deleteContact(OKU_WORD handle) const;
    void setContactState(const OKU_CONTACT_STATE& state) const;
    void setTyping(const OKU_CONTACT_RECORD& contact, bool composing) const;
    void askForAuthorization(const OKU_CONTACT_RECORD& contact) const;

private:
    OKU_WORD call(const char16_t* service, OKU_WORD param, OKU_WORD extra = 0) const;

    const OKU_FUNCTION_TABLE* table_ = nullptr;
    OKU_WORD module_ = 0;
    int drawingPauses_ = 0;
};

/// Keeps the contact list from being drawn while it lives. However a change of many contacts ends, the list is drawn
/// again.
class DrawingPause {
public:
    explicit DrawingPause(Host& host) : host_(host) { host_.pauseDrawing(); }
    ~DrawingPause() { host_.resumeDrawing(); }
    DrawingPause(const DrawingPause&) = delete;
    DrawingPause& operator=(const DrawingPause&) = delete;

private:
    Host& host_;
};

/// The name of one of an account's own services.
std::u16string accountServiceName(std::uint32_t netId, const char16_t* shortName);
