// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Compressed pieces of any kind and cut, against a model: one zlib stream with room without end.
#include <zlib.h>

#include <string>

#include "fuzz/input.h"
#include "stream/zip_stream.h"

using namespace protolink;

namespace {

/// Inflates piece after piece into as much room as it takes; tells the code of the first fault.
class Model {
public:
    Model() { inflateInit(&stream_); }
    ~Model() { inflateEnd(&stream_); }
    Model(const Model&) = delete;
    Model& operator=(const Model&) = delete;

    int inflatePiece(std::string_view piece, std::string_view& output) {
        static std::string room(kRoom, '\0');
        stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(piece.data()));
        stream_.avail_in = static_cast<uInt>(piece.size());
        stream_.next_out = reinterpret_cast<Bytef*>(room.data());
        stream_.avail_out = kRoom;
        const int code = ::inflate(&stream_, Z_SYNC_FLUSH);
        output = std::string_view(room).substr(0, kRoom - stream_.avail_out);
        return std::min(code, 0);
    }

private:
    static constexpr uInt kRoom = 1 << 23;
    z_stream stream_{};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const bool valid = input.byte() & 1;
    const std::string cuts(input.text());
    CZipStream sender, receiver;
    sender.zStart();
    receiver.zStart();
    Model model;
    std::string bytes(input.rest());
    std::string plain = bytes;
    if (valid) fuzz::require(sender.zDeflate(plain, bytes), "a text cannot be compressed");
    std::string received;
    for (std::size_t at = 0, piece = 0; at < bytes.size(); ++piece) {
        const std::size_t wanted = piece < cuts.size() ? static_cast<unsigned char>(cuts[piece]) + 1u : bytes.size();
        const std::string_view part = std::string_view(bytes).substr(at, wanted);
        at += part.size();
        std::string_view wantedOutput;
        const int wantedCode = model.inflatePiece(part, wantedOutput);
        constexpr std::size_t kRoom = 32768;
        static std::string output(kRoom, '\0');
        std::size_t length = kRoom;
        const int code = receiver.zInflate(output.data(), length, part);
        if (wantedOutput.size() >= kRoom) {
            fuzz::require(code == Z_BUF_ERROR && length == wantedOutput.size(), "a full buffer is not told");
            return 0;
        }
        fuzz::require(code == wantedCode, "another code than the model's");
        fuzz::require(length == wantedOutput.size() && output.compare(0, length, wantedOutput) == 0,
                      "other bytes than the model's");
        if (code != Z_OK) return 0;
        received.append(output, 0, length);
    }
    if (valid) fuzz::require(received == plain, "what was compressed does not come back");
    return 0;
}
