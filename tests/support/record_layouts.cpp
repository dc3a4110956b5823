// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/support/records.h"

namespace harness::layouts {
namespace {

using enum FieldKind;

constexpr FieldLayout kLogFields[] = {{"level", 4, I32}, {"tag", 8, Text}, {"text", 16, Text}};
constexpr FieldLayout kSettingsFields[] = {
    {"key", 8, Text}, {"type", 16, U32}, {"value", 24, Skip}, {"length", 32, Skip}, {"store", 40, Skip}};
constexpr FieldLayout kTimerFields[] = {
    {"id", 8, Text}, {"interval", 16, U32}, {"handler", 24, Callback}, {"context", 32, Context}, {"oneShot", 40, U32}};
constexpr FieldLayout kHookFields[] = {
    {"class", 8, Class}, {"net", 16, Net}, {"kind", 20, U32}, {"phase", 24, U32}, {"subject", 32, Skip}};
constexpr FieldLayout kHookDataFields[] = {{"data", 8, Skip}, {"length", 16, U32}, {"flags", 20, U32}};
constexpr FieldLayout kStatusDataFields[] = {{"status", 16, Status}, {"description", 24, Text}, {"time", 32, Time}};
constexpr FieldLayout kContactFields[] = {
    {"jid", 16, Text}, {"class", 24, Class}, {"net", 32, Net}, {"resource", 48, Resource}};
constexpr FieldLayout kResourceFields[] = {{"resource", 8, Text}, {"priority", 28, I32}};
constexpr FieldLayout kContactStateFields[] = {{"contact", 8, Contact},
                                               {"status", 16, Status},
                                               {"description", 24, Text},
                                               {"time", 32, Time},
                                               {"resource", 48, SameResource, 48}};
constexpr FieldLayout kContactAddFields[] = {{"jid", 24, Text},          {"class", 32, Class}, {"net", 40, Net},
                                             {"name", 64, Text},         {"group", 72, Text},  {"kind", 80, U32},
                                             {"authorization", 84, U32}, {"handle", 88, Skip}, {"fields", 96, U32}};
constexpr FieldLayout kContactIdentityFields[] = {{"jid", 16, Text}, {"class", 24, Class}, {"net", 32, Net}};
constexpr FieldLayout kContactIconFields[] = {
    {"icon", 8, Text}, {"value52", 52, U32}, {"value56", 56, U32}, {"tooltip", 72, Text}};
constexpr FieldLayout kContactAvatarFields[] = {
    {"path", 8, Text}, {"kind", 16, U32}, {"contact", 32, Contact}, {"count", 48, U32}};
constexpr FieldLayout kCardElementFields[] = {
    {"label", 8, Text}, {"value", 16, Text}, {"kind", 24, U32}, {"token", 32, Word}};
constexpr FieldLayout kCardStatusFields[] = {{"text", 8, Text}, {"state", 16, U32}, {"token", 24, Word}};
constexpr FieldLayout kOwnCardFieldFields[] = {{"key", 8, Text}, {"value", 16, Text}, {"token", 32, Word}};
constexpr FieldLayout kOwnCardFieldGetFields[] = {
    {"key", 8, Text}, {"buffer", 16, Skip}, {"capacity", 24, U32}, {"token", 32, Word}};
constexpr FieldLayout kOwnCardStatusFields[] = {
    {"text", 8, Text}, {"token", 16, Word}, {"class", 24, Class}, {"net", 32, Net}};
constexpr FieldLayout kMessageFields[] = {{"jid", 24, Text},          {"class", 32, Class},  {"net", 40, Net},
                                          {"resource", 56, Resource}, {"subject", 64, Text}, {"body", 72, Text},
                                          {"flags", 80, U32},         {"time", 88, Time},    {"resource2", 112, Skip}};
constexpr FieldLayout kMessageSendFields[] = {{"contactSize", 8, Skip}, {"jid", 24, Text},     {"class", 32, Class},
                                              {"net", 40, Net},         {"subject", 64, Text}, {"body", 72, Text},
                                              {"flags", 80, U32}};
constexpr FieldLayout kProtocolFields[] = {
    {"class", 8, Class},      {"shortName", 16, Text}, {"caption", 24, Text},       {"netId", 32, Skip},
    {"uuid", 40, Text},       {"wanted", 48, I32},     {"authorize", 72, Callback}, {"delete", 80, Callback},
    {"context", 88, Context}, {"flags", 96, Callback}};
constexpr FieldLayout kInfoFields[] = {{"jid", 8, Text}, {"user", 16, Text}, {"class", 24, Class}, {"net", 32, Net}};
constexpr FieldLayout kMenuFields[] = {
    {"id", 8, Text},       {"parent", 16, Text}, {"caption", 24, Text},       {"flags", 40, U32},
    {"order", 44, I32},    {"icon", 48, Text},   {"callback", 56, MenuClick}, {"context", 64, MaybeContext},
    {"module", 80, Module}};
constexpr FieldLayout kDirectoryFields[] = {{"buffer", 8, Skip}, {"capacity", 16, U32}, {"subdirectory", 24, Text}};
constexpr FieldLayout kIconClassFields[] = {{"name", 8, Text}, {"value52", 52, U32}};
constexpr FieldLayout kIconLoadFields[] = {{"name", 8, Text}, {"resource", 48, Word}, {"module", 56, Module}};
constexpr FieldLayout kIconSetFields[] = {{"value16", 16, U32},         {"statuses", 24, Statuses, 32},
                                          {"second", 40, Statuses, 48}, {"value52", 52, U32},
                                          {"baseName", 56, Text},       {"class", 64, Class}};
constexpr FieldLayout kOptionsPageFields[] = {
    {"id", 8, Text},        {"parent", 16, Text},       {"caption", 24, Text},   {"icon", 40, Skip},
    {"iconName", 48, Text}, {"callback", 56, Callback}, {"context", 64, Context}};
constexpr FieldLayout kPropertiesPageFields[] = {{"id", 8, Text},
                                                 {"caption", 24, Text},
                                                 {"value32", 32, U32},
                                                 {"value36", 36, I32},
                                                 {"callback", 56, Callback},
                                                 {"context", 64, Context},
                                                 {"class", 80, Class},
                                                 {"net", 88, Net}};
constexpr FieldLayout kContactPageFields[] = {
    {"id", 8, Text},      {"caption", 24, Text},      {"value32", 32, U32},
    {"value36", 36, I32}, {"callback", 56, Callback}, {"context", 64, Context}};
constexpr FieldLayout kStatusPrepareFields[] = {
    {"title", 8, Text}, {"statuses", 16, Statuses, 24}, {"value28", 28, U32},    {"class", 32, Class},
    {"net", 40, Net},   {"callback", 48, Callback},     {"context", 56, Context}};
constexpr FieldLayout kStatusShowFields[] = {{"description", 8, Text}, {"status", 16, Status}, {"class", 24, Class},
                                             {"net", 32, Net},         {"value36", 36, U32},   {"protect", 40, U32}};
constexpr FieldLayout kStatusTextsFields[] = {
    {"title", 8, Text}, {"header", 16, Text}, {"account", 24, Text}, {"window", 32, Word}};
constexpr FieldLayout kMessageBoxFields[] = {
    {"text", 8, Text}, {"title", 16, Text}, {"style", 24, U32}, {"owner", 32, Window}};
constexpr FieldLayout kNotifyFields[] = {{"text", 8, Text},  {"title", 16, Text},         {"key", 24, Text},
                                         {"icon", 32, Text}, {"value40", 40, U32},        {"kind", 48, U32},
                                         {"mode", 52, U32},  {"callback", 56, MenuClick}, {"user", 64, Word}};
constexpr FieldLayout kPepEventFields[] = {{"own", 24, Text},  {"ownClass", 32, Class}, {"ownNet", 40, Net},
                                           {"jid", 80, Text},  {"class", 88, Class},    {"net", 96, Net},
                                           {"kind", 120, Skip}};
constexpr FieldLayout kPepTuneFields[] = {{"track", 8, Text},   {"artist", 16, Text}, {"title", 24, Text},
                                          {"source", 32, Text}, {"uri", 40, Text},    {"length", 48, Text},
                                          {"id", 56, Text}};
constexpr FieldLayout kPepMoodFields[] = {{"mood", 8, Text}, {"text", 16, Text}, {"id", 24, Text}};
constexpr FieldLayout kPepLocationFields[] = {
    {"accuracy", 8, Text},     {"alt", 16, Text},     {"area", 24, Text},        {"bearing", 32, Text},
    {"building", 40, Text},    {"country", 48, Text}, {"countrycode", 56, Text}, {"datum", 64, Text},
    {"description", 72, Text}, {"error", 80, Text},   {"floor", 88, Text},       {"lat", 96, Text},
    {"locality", 104, Text},   {"lon", 112, Text},    {"postalcode", 120, Text}, {"region", 128, Text},
    {"room", 136, Text},       {"speed", 144, Text},  {"street", 152, Text},     {"text", 160, Text},
    {"timestamp", 168, Text},  {"uri", 176, Text},    {"id", 184, Text}};
constexpr FieldLayout kSocketCreateFields[] = {
    {"kind", 20, U32}, {"callback", 32, Callback}, {"context", 40, Context}, {"name", 56, Text}};
constexpr FieldLayout kSocketConnectFields[] = {
    {"host", 16, Text},        {"port", 24, U32},      {"socket", 32, Text},    {"proxyHost", 40, Text},
    {"proxyType", 48, U32},    {"proxyPort", 52, U32}, {"proxyUser", 56, Text}, {"proxyPassword", 64, Text},
    {"proxyEnabled", 72, U32}, {"service", 80, Text}};
constexpr FieldLayout kSocketSendFields[] = {{"data", 8, Skip}, {"length", 16, U32}, {"socket", 24, Text}};

constexpr FieldLayout kTransferInitFields[] = {
    {"callback", 8, Callback}, {"context", 16, Context}, {"status", 24, Text}, {"title", 40, Text},
    {"contact", 48, Text},     {"contact2", 56, Text},   {"update", 64, Skip}, {"data", 72, Skip},
    {"record", 80, Contact},   {"module", 104, Module}};
constexpr FieldLayout kTransferAskFields[] = {
    {"question", 8, Text}, {"path", 16, Text}, {"capacity", 24, U32}, {"sender", 32, Text}};
constexpr FieldLayout kPublishFields[] = {{"file", 16, Published},
                                          {"state", 32, Callback},
                                          {"context", 40, Context},
                                          {"progress", 56, Callback},
                                          {"context", 64, Context}};
constexpr FieldLayout kFileChooserFields[] = {
    {"filter", 8, Text},        {"flags", 16, U32},       {"title", 24, Text},   {"owner", 32, Word},
    {"callback", 40, Callback}, {"context", 48, Context}, {"module", 56, Module}};
constexpr FieldLayout kWindowFields[] = {{"template", 4, Half},     {"title", 8, Skip},     {"heading", 16, Text},
                                         {"description", 24, Text}, {"controls", 32, Skip}, {"count", 40, Half},
                                         {"flags", 44, U32},        {"parent", 48, Skip},   {"callback", 56, Callback},
                                         {"context", 64, Context},  {"module", 72, Module}, {"width", 80, I32},
                                         {"height", 84, I32},       {"minWidth", 88, I32},  {"minHeight", 92, I32}};
constexpr FieldLayout kControlFields[] = {
    {"kind", 4, Half},   {"id", 8, Half},     {"flags", 12, U32},      {"text", 16, Text},  {"name", 24, Text},
    {"items", 32, Skip}, {"count", 40, Half}, {"selection", 44, Half}, {"place", 48, Skip}, {"place", 56, Skip},
    {"empty", 64, Text}, {"font", 72, Text},  {"fontSize", 80, U32}};
constexpr FieldLayout kWindowTextFields[] = {{"which", 4, Half}, {"window", 8, Skip}, {"text", 16, Skip}};
constexpr FieldLayout kControlValueFields[] = {
    {"what", 4, Half}, {"window", 8, Skip}, {"control", 16, Half}, {"number", 24, Skip}, {"text", 32, Skip}};
constexpr FieldLayout kControlPlaceFields[] = {{"control", 4, Half}, {"window", 8, Skip}, {"x", 16, I32},
                                               {"y", 20, I32},       {"width", 24, I32},  {"height", 28, I32}};
constexpr FieldLayout kRowFields[] = {{"control", 4, Half}, {"window", 8, Skip},  {"row", 16, Skip},
                                      {"text", 24, Skip},   {"fields", 32, Skip}, {"count", 40, Half}};
constexpr FieldLayout kRowFieldFields[] = {{"label", 8, Skip}, {"value", 16, Skip}};
constexpr FieldLayout kPopupMenuFields[] = {
    {"count", 4, Half}, {"window", 8, Skip}, {"items", 16, Skip}, {"control", 24, Half}};
constexpr FieldLayout kPopupItemFields[] = {{"command", 4, Half}, {"text", 8, Skip}, {"flags", 16, Half}};
constexpr FieldLayout kPublishedFields[] = {{"path", 8, Text}};

}  // namespace

const RecordLayout kLog{"OKU_LOG_RECORD", 40, kLogFields};
const RecordLayout kSettings{"OKU_SETTINGS_RECORD", 48, kSettingsFields};
const RecordLayout kTimer{"OKU_TIMER_RECORD", 48, kTimerFields};
const RecordLayout kHook{"OKU_PROTOCOL_HOOK", 40, kHookFields};
const RecordLayout kHookData{"OKU_HOOK_DATA", 24, kHookDataFields};
const RecordLayout kStatusData{"OKU_STATUS_DATA", 64, kStatusDataFields};
const RecordLayout kContact{"OKU_CONTACT_RECORD", 56, kContactFields};
const RecordLayout kResource{"OKU_RESOURCE_INFO", 40, kResourceFields};
const RecordLayout kContactState{"OKU_CONTACT_STATE", 64, kContactStateFields};
const RecordLayout kContactAdd{"OKU_CONTACT_ADD", 104, kContactAddFields};
const RecordLayout kContactIdentity{"OKU_CONTACT_IDENTITY", 56, kContactIdentityFields, false};
const RecordLayout kContactIcon{"OKU_CONTACT_ICON", 80, kContactIconFields};
const RecordLayout kContactAvatar{"OKU_CONTACT_AVATAR", 56, kContactAvatarFields};
const RecordLayout kCardElement{"OKU_CARD_ELEMENT", 40, kCardElementFields};
const RecordLayout kCardStatus{"OKU_CARD_STATUS", 32, kCardStatusFields};
const RecordLayout kOwnCardField{"OKU_OWN_CARD_FIELD", 40, kOwnCardFieldFields};
const RecordLayout kOwnCardFieldGet{"OKU_OWN_CARD_FIELD_GET", 40, kOwnCardFieldGetFields};
const RecordLayout kOwnCardStatus{"OKU_OWN_CARD_STATUS", 40, kOwnCardStatusFields};
const RecordLayout kMessage{"OKU_MESSAGE_DATA", 128, kMessageFields};
const RecordLayout kMessageSend{"OKU_MESSAGE_SEND", 88, kMessageSendFields};
const RecordLayout kProtocol{"OKU_PROTOCOL_RECORD", 104, kProtocolFields};
const RecordLayout kInfo{"OKU_PF_INFO", 40, kInfoFields};
const RecordLayout kMenu{"OKU_MENU_RECORD", 96, kMenuFields};
const RecordLayout kDirectory{"OKU_DIRECTORY", 32, kDirectoryFields};
const RecordLayout kIconClass{"OKU_ICON_CLASS", 80, kIconClassFields};
const RecordLayout kIconLoad{"OKU_ICON_LOAD", 72, kIconLoadFields};
const RecordLayout kIconSet{"OKU_ICON_SET", 72, kIconSetFields};
const RecordLayout kOptionsPage{"OKU_OPTIONS_PAGE", 80, kOptionsPageFields};
const RecordLayout kPropertiesPage{"OKU_PROPERTIES_PAGE", 96, kPropertiesPageFields};
const RecordLayout kContactPage{"OKU_PROPERTIES_PAGE", 96, kContactPageFields};
const RecordLayout kStatusPrepare{"OKU_STATUS_WINDOW_PREPARE", 64, kStatusPrepareFields};
const RecordLayout kStatusShow{"OKU_STATUS_WINDOW_SHOW", 48, kStatusShowFields};
const RecordLayout kStatusTexts{"OKU_STATUS_WINDOW_TEXTS", 40, kStatusTextsFields};
const RecordLayout kMessageBox{"OKU_MESSAGE_BOX", 48, kMessageBoxFields};
const RecordLayout kNotify{"OKU_NOTIFY", 72, kNotifyFields};
const RecordLayout kPepEvent{"OKU_PEP_EVENT", 128, kPepEventFields};
const RecordLayout kPepTune{"OKU_PEP_TUNE_DATA", 64, kPepTuneFields};
const RecordLayout kPepMood{"OKU_PEP_MOOD_DATA", 32, kPepMoodFields};
const RecordLayout kPepLocation{"OKU_PEP_LOCATION_DATA", 192, kPepLocationFields};
const RecordLayout kSocketCreate{"NL_CREATE_RECORD", 72, kSocketCreateFields};
const RecordLayout kSocketConnect{"NL_CONNECT_RECORD", 88, kSocketConnectFields};
const RecordLayout kSocketSend{"NL_SEND_RECORD", 32, kSocketSendFields};
const RecordLayout kTransferInit{"OKU_FT_INIT_RECORD", 112, kTransferInitFields};
const RecordLayout kTransferAsk{"OKU_FT_ASK_RECORD", 40, kTransferAskFields};
const RecordLayout kPublish{"OK7_PREPARE_RECORD", 72, kPublishFields};
const RecordLayout kPublished{"OK7_PREPARE_RESULT", 2064, kPublishedFields};
const RecordLayout kFileChooser{"OKU_FILE_CHOOSER", 64, kFileChooserFields};
const RecordLayout kWindow{"OKU_WINDOW", 96, kWindowFields};
const RecordLayout kControl{"OKU_CONTROL", 96, kControlFields};
const RecordLayout kWindowText{"OKU_WINDOW_TEXT", 32, kWindowTextFields};
const RecordLayout kControlValue{"OKU_CONTROL_VALUE", 48, kControlValueFields};
const RecordLayout kControlPlace{"OKU_CONTROL_PLACE", 32, kControlPlaceFields};
const RecordLayout kRow{"OKU_ROW", 48, kRowFields};
const RecordLayout kRowField{"OKU_ROW_FIELD", 24, kRowFieldFields};
const RecordLayout kPopupMenu{"OKU_POPUP_MENU", 32, kPopupMenuFields};
const RecordLayout kPopupItem{"OKU_POPUP_ITEM", 24, kPopupItemFields};
const RecordLayout kProxyDefaults{"NL_PROXY_DEFAULTS", 1556, {}};

}  // namespace harness::layouts
