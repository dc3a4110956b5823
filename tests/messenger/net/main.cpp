// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <QCoreApplication>

#include "messenger/core/texts.h"

int main(int count, char** arguments) {
    QCoreApplication application(count, arguments);
    oku::setLanguage(oku::Language::English);  // the sentences that tests look for are the English ones
    testing::InitGoogleTest(&count, arguments);
    return RUN_ALL_TESTS();
}
