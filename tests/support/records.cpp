// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/support/records.h"

#include <array>
#include <stdexcept>

#include "tests/support/text.h"

namespace harness {
namespace {

constexpr std::array<const char*, 9> kStatusWords = {"",   "online",    "chat",    "dnd",  "away",
                                                     "xa", "invisible", "offline", "error"};

std::size_t widthOf(FieldKind kind) {
    using enum FieldKind;
    return kind == U32 || kind == I32 || kind == Net || kind == Status || kind == Half ? 4 : 8;
}

class Reader {
public:
    Reader(const RecordLayout& layout, const void* record, const ReadContext& context)
        : layout_(layout), record_(record), context_(context), documented_(layout.size, false) {}

    std::vector<Field> read() {
        if (layout_.begins) {
            mark(0, 4);
            const auto size = peek<std::uint32_t>(record_, 0);
            if (size != layout_.size) complain("has the size " + std::to_string(size));
        }
        for (const auto& field : layout_.fields) {
            const std::size_t skipped = field.kind == FieldKind::Skip ? skipWidth(field) : widthOf(field.kind);
            mark(field.offset, skipped);
            if (field.kind == FieldKind::Statuses) mark(field.other, 4);
            readField(field);
        }
        for (std::size_t i = 0; i < layout_.size; ++i) {
            if (!documented_[i] && peek<char>(record_, i) != 0)
                return complain("is not zero at " + std::to_string(i)), out_;
        }
        return out_;
    }

private:
    void mark(std::size_t offset, std::size_t width) {
        for (std::size_t i = offset; i < offset + width; ++i) documented_.at(i) = true;
    }
    static std::size_t skipWidth(const FieldLayout& field) {
        const std::string_view name = field.name;
        return name == "length" || name == "kind" || name == "netId" || name == "contactSize" ? 4 : 8;
    }
    void complain(const std::string& what) { context_.complain(std::string(layout_.name) + " " + what); }
    void show(const char* name, const std::string& text, bool quotes) { out_.push_back({name, {text, quotes}}); }
    void number(const char* name, long long value) {
        if (value != 0) show(name, std::to_string(value), false);
    }
    void append(const std::vector<Field>& fields) { out_.insert(out_.end(), fields.begin(), fields.end()); }

    void readField(const FieldLayout& field) {
        using enum FieldKind;
        switch (field.kind) {
            case U32:
                return number(field.name, peek<std::uint32_t>(record_, field.offset));
            case I32:
                return number(field.name, peek<std::int32_t>(record_, field.offset));
            case Word:
                return number(field.name, peek<OKU_WORD>(record_, field.offset));
            case Net:
                return readNet(field);
            case Status:
                return show(field.name, statusWord(peek<std::uint32_t>(record_, field.offset)), false);
            case Time:
                return readTime(field);
            case Window:
                return readWindow(field);
            case Half:
            case Skip:
                return;
            default:
                return readPointer(field, peek<const void*>(record_, field.offset));
        }
    }

    void readNet(const FieldLayout& field) {
        const auto net = peek<std::uint32_t>(record_, field.offset);
        if (net != 1) show(field.name, std::to_string(net), false);
    }

    void readWindow(const FieldLayout& field) {
        const auto handle = peek<OKU_WORD>(record_, field.offset);
        if (handle == 0) return;
        const auto shown = context_.templateOf ? context_.templateOf(handle) : 0;
        if (shown == 0) complain(std::string("names no open window as its ") + field.name);
        number(field.name, shown);
    }

    void readTime(const FieldLayout& field) {
        const auto time = peek<std::int64_t>(record_, field.offset);
        if (time == context_.now) return show(field.name, "now", false);
        number(field.name, time);
    }

    void readPointer(const FieldLayout& field, const void* pointer) {
        using enum FieldKind;
        switch (field.kind) {
            case Text:
                if (pointer) show(field.name, copyText(pointer), true);
                return;
            case Class:
                if (copyText(pointer) != "XMPP") show(field.name, copyText(pointer), true);
                return;
            case Callback:
                if (!pointer) complain(std::string("has no ") + field.name);
                return;
            case MenuClick:
                if (pointer) show(field.name, "set", false);
                return;
            case Context:
                if (!pointer) show(field.name, "none", false);
                return;
            case MaybeContext:
                if (pointer) show(field.name, "account", false);
                return;
            case Module:
                if (peek<OKU_WORD>(record_, field.offset) != context_.module) show(field.name, "none", false);
                return;
            case Statuses:
                return readStatuses(field, static_cast<const std::uint32_t*>(pointer));
            case Contact:
                if (pointer) append(readRecord(layouts::kContact, pointer, context_));
                contact_ = pointer;
                return;
            case Published:
                return append(readRecord(layouts::kPublished, pointer, context_));
            case Resource:
                if (pointer) append(readRecord(layouts::kResource, pointer, context_));
                return;
            case SameResource:
                if (contact_ && pointer != peek<const void*>(contact_, field.other)) show("resource2", "other", false);
                return;
            default:
                return;
        }
    }

    void readStatuses(const FieldLayout& field, const std::uint32_t* list) {
        std::string text = "[";
        for (std::uint32_t i = 0; i < peek<std::uint32_t>(record_, field.other); ++i) {
            text += (i ? "," : "") + std::to_string(list[i]);
        }
        show(field.name, text + "]", false);
    }

    const RecordLayout& layout_;
    const void* record_;
    const ReadContext& context_;
    const void* contact_ = nullptr;
    std::vector<bool> documented_;
    std::vector<Field> out_;
};

}  // namespace

std::vector<Field> readRecord(const RecordLayout& layout, const void* record, const ReadContext& context) {
    if (!record) {
        context.complain(std::string(layout.name) + " is null");
        return {};
    }
    return Reader(layout, record, context).read();
}

std::string copyText(const void* text) {
    return text ? toUtf8(std::u16string(static_cast<const char16_t*>(text))) : std::string();
}

std::string statusWord(std::uint32_t status) {
    return status >= 1 && status < kStatusWords.size() ? kStatusWords[status] : std::to_string(status);
}

std::uint32_t statusCode(const std::string& word) {
    for (std::uint32_t i = 1; i < kStatusWords.size(); ++i) {
        if (word == kStatusWords[i]) return i;
    }
    std::size_t used = 0;
    const auto number = std::stoul(word, &used);
    if (used != word.size()) throw std::invalid_argument("no status: " + word);
    return static_cast<std::uint32_t>(number);
}

}  // namespace harness
