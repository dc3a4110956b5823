// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <QFile>

#include "tests/messenger/core/transfer_stage.h"

namespace oku::test {
namespace {

/// The plugin's half of choosing: what it asks, and what it hears.
class FileChoosersTest : public TransferStage {
protected:
    void SetUp() override {
        TransferStage::SetUp();
        file = folder("b.bin");
        QDir().mkpath(folder());
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        QObject::connect(face.get(), &TransfersFace::fileAsked, face.get(),
                         [this](const FileQuestion& question) { asked.append(question); });
        QObject::connect(face.get(), &TransfersFace::fileQuestionClosed, face.get(),
                         [this](int number) { closedQuestions.append(number); });
        QObject::connect(&core->choosers, &FileChoosers::noticed, face.get(),
                         [this](const QString&, const QString& text) { notes.append(text); });
    }
    /// What the plugin does when it wants a file, from within a call.
    OKU_WORD openChooser() {
        auto record = makeRecord<OKU_FILE_CHOOSER>();
        record.filter = u"Wszystkie|*.*||";
        record.title = u"Plik";
        record.context = wordOf(this);
        record.callback = [](OKU_WORD choice, OKU_WORD, OKU_WORD context) -> OKU_WORD {
            auto& self = *reinterpret_cast<FileChoosersTest*>(context);
            EXPECT_FALSE(self.inside) << "not from inside the call";
            EXPECT_TRUE(self.core->queue.busy());
            const auto* given = reinterpret_cast<const OKU_FILE_CHOICE*>(choice);
            self.heard.append(QStringLiteral("%1 %2").arg(given->kind).arg(wideText(given->path)));
            return 0;
        };
        inside = true;
        const OKU_WORD result = call(u"UI/FileChooser", wordOf(&record));
        inside = false;
        return result;
    }
    int question() {
        inPlugin([&] { EXPECT_NE(openChooser(), 0); });
        return asked.last().number;
    }
    /// The plugin takes files to be sent, opening as many choosers.
    void takeFiles(int choosers) {
        wanted = choosers;
        core->services.create(
            entry().service(u"PFInitSendFile"),
            [](OKU_WORD, OKU_WORD, OKU_WORD context) -> OKU_WORD {
                auto& self = *reinterpret_cast<FileChoosersTest*>(context);
                for (int number = 0; number < self.wanted; ++number) self.openChooser();
                return self.wanted > 0 ? 1 : 0;
            },
            wordOf(this));
    }
    QString send() {
        return face->sendFile(QStringLiteral("alice@example.org"), QStringLiteral("bob@example.org"), file);
    }
    QString chosen() { return QStringLiteral("1 ") + file; }

    QString file;
    QStringList heard;
    QStringList notes;
    QList<FileQuestion> asked;
    QList<int> closedQuestions;
    bool inside = false;
    int wanted = 0;
};

TEST_F(FileChoosersTest, TheChoiceIsToldExactlyOnce) {
    const int number = question();
    EXPECT_EQ(asked.last().account, QStringLiteral("alice@example.org"));
    EXPECT_EQ(asked.last().title, QStringLiteral("Plik"));
    EXPECT_EQ(asked.last().filter, QStringLiteral("Wszystkie|*.*||"));
    EXPECT_EQ(face->openFileQuestions().size(), 1);
    EXPECT_EQ(face->chooseFile(number, file), QString());
    EXPECT_EQ(heard, QStringList{chosen()});
    EXPECT_NE(face->chooseFile(number, file), QString());
    EXPECT_NE(face->chooseFile(number, {}), QString());
    EXPECT_EQ(heard.size(), 1);
    EXPECT_EQ(closedQuestions, QList<int>{number});
    EXPECT_TRUE(face->openFileQuestions().isEmpty());
}

TEST_F(FileChoosersTest, NoneCanBeChosen) {
    EXPECT_EQ(face->chooseFile(question(), {}), QString());
    EXPECT_EQ(heard, QStringList{QStringLiteral("2 ")});
}

TEST_F(FileChoosersTest, AFileThatIsNoneLeavesTheQuestionOpen) {
    const int number = question();
    EXPECT_NE(face->chooseFile(number, folder("nie ma")), QString());
    EXPECT_NE(face->chooseFile(number, folder()), QString());
    EXPECT_NE(face->chooseFile(number, QStringLiteral("b.bin")), QString());
    EXPECT_TRUE(heard.isEmpty());
    EXPECT_EQ(face->openFileQuestions().size(), 1);
}

TEST_F(FileChoosersTest, IsAnsweredAfterTheCallAlsoFromItsOwnSignal) {
    QObject::connect(face.get(), &TransfersFace::fileAsked, face.get(),
                     [this](const FileQuestion& one) { EXPECT_EQ(face->chooseFile(one.number, file), QString()); });
    inPlugin([&] {
        EXPECT_NE(openChooser(), 0);
        EXPECT_TRUE(heard.isEmpty());
    });
    EXPECT_EQ(heard, QStringList{chosen()});
}

TEST_F(FileChoosersTest, AFileThatIsSentAnswersTheChooserThatOpensForIt) {
    takeFiles(1);
    EXPECT_EQ(send(), QString());
    EXPECT_EQ(heard, QStringList{chosen()});
    EXPECT_TRUE(asked.isEmpty());
    EXPECT_TRUE(notes.isEmpty());
}

TEST_F(FileChoosersTest, OnlyTheFirstChooserGetsTheFileThatIsSent) {
    takeFiles(2);
    EXPECT_EQ(send(), QString());
    EXPECT_EQ(heard, QStringList{chosen()});
    EXPECT_EQ(asked.size(), 1) << "the user is asked for the second";
}

TEST_F(FileChoosersTest, AFileThatNobodyTookIsToldAndForgotten) {
    takeFiles(0);
    EXPECT_EQ(send(), QString());
    ASSERT_EQ(notes.size(), 1);
    EXPECT_TRUE(notes[0].contains(file));
    question();
    EXPECT_TRUE(heard.isEmpty()) << "it answers no later question";
}

TEST_F(FileChoosersTest, OfAnAccountThatIsGoneIsAskedAllTheSame) {
    core->queue.post({}, [&] { EXPECT_NE(openChooser(), 0); });
    ASSERT_EQ(asked.size(), 1);
    EXPECT_EQ(asked[0].account, QString());
    EXPECT_EQ(face->chooseFile(asked[0].number, file), QString());
    EXPECT_EQ(heard, QStringList{chosen()});
}

TEST_F(FileChoosersTest, EndsWithItsAccount) {
    const int number = question();
    OKU_WORD gone = 0;
    inPlugin([&] {
        gone = call(u"OKU/ProtocolDel", 0, account().netId);
        EXPECT_TRUE(heard.isEmpty()) << "not from inside the call";
    });
    EXPECT_EQ(gone, 1);
    EXPECT_EQ(closedQuestions, QList<int>{number});
    EXPECT_EQ(heard, QStringList{QStringLiteral("2 ")}) << "once, as it was promised";
    EXPECT_TRUE(face->openFileQuestions().isEmpty());
    EXPECT_NE(face->chooseFile(number, file), QString());
}

TEST_F(FileChoosersTest, OfAnotherAccountStaysOpen) {
    core->queue.post({}, [&] { EXPECT_NE(openChooser(), 0); });
    inPlugin([&] { call(u"OKU/ProtocolDel", 0, account().netId); });
    EXPECT_EQ(face->openFileQuestions().size(), 1);
}

TEST_F(FileChoosersTest, EndsWithThePlugin) {
    const int number = question();
    core->queue.post({}, [&] { core->unload(); });
    EXPECT_EQ(closedQuestions, QList<int>{number});
    EXPECT_NE(face->chooseFile(number, file), QString());
    EXPECT_TRUE(heard.isEmpty()) << "nobody is there to hear it";
    core->queue.post({}, [&] { core->load(); });
    EXPECT_NE(face->chooseFile(number, file), QString()) << "the next load knows nothing of it";
    EXPECT_TRUE(heard.isEmpty());
    const int next = question();
    EXPECT_NE(next, number);
    EXPECT_EQ(face->chooseFile(next, file), QString());
    EXPECT_EQ(heard, QStringList{chosen()});
}

TEST_F(FileChoosersTest, AChoiceThatWaitsIsNotToldToTheNextLoad) {
    const int number = question();
    core->queue.post({}, [&] {
        core->unload();
        core->load();
    });
    EXPECT_TRUE(heard.isEmpty());
    const int next = question();
    EXPECT_NE(next, number);
    core->queue.post({}, [&] {
        EXPECT_EQ(face->chooseFile(next, file), QString()) << "it waits for the end of this call";
        core->unload();
        core->load();
    });
    EXPECT_TRUE(heard.isEmpty());
}

}  // namespace
}  // namespace oku::test
