// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "transfer/transfer_base.h"

#include "host/util/file_name.h"
#include "transfer/session.h"

namespace protolink {

bool CTransferBase::ReportStart(const std::u16string& text) {
    if (!session_) return false;
    const CSession& session = *session_;
    session.SetState(OKU_FT_RUNNING);
    session.SetStatusText(text);
    session.SetTotalSize(session.size);
    return true;
}

bool CTransferBase::ReportStatus(const std::u16string& text) {
    if (!session_) return false;
    session_->SetStatusText(text);
    return true;
}

bool CTransferBase::ReportFailure(const std::u16string& text) {
    if (!session_) return false;
    CSession& session = *session_;
    session.SetState(OKU_FT_FAILED);
    session.SetStatusText(text);
    session.Drop();
    return true;
}

bool CTransferBase::ReportFinished(const std::u16string& text, bool showLink, bool drop) {
    if (!session_) return true;
    CSession& session = *session_;
    session.SetStatusText(text);
    if (showLink) session.SetLink(u"<a>Otwórz</a> plik", session.path);
    if (drop) session.Drop();
    return true;
}

bool CTransferBase::OpenFile(bool forReading) {
    if (!session_ || file_) return false;
    // No peer chose the name of a file that is sent, so that one is never opened for writing: a receiver who asks for
    // the opposite direction would have it overwritten.
    file_ =
        forReading ? platform::openForReading(session_->path) : openReceived(session_->path, session_->chosenName());
    return file_ != nullptr;
}

bool CTransferBase::CloseFile() {
    if (!file_) return false;
    shutWell_ = file_->close();
    file_.reset();
    return true;
}

std::u16string CTransferBase::GetSid() const { return session_ ? session_->sid : std::u16string(); }

void CTransferBase::SetSid(std::u16string_view text) {
    if (session_) session_->sid = text;
}

void CTransferBase::SetPath(const std::u16string& text) {
    if (session_) session_->path = text;
}

void CTransferBase::retire() {
    session_ = nullptr;
    account_.dispatcher.removeByUser(this);
    CloseFile();
}

std::unique_ptr<platform::File> openReceived(const std::u16string& path, std::u16string_view chosenName) {
    return isPlainFileName(chosenName) ? platform::openForWriting(path) : nullptr;
}

}  // namespace protolink
