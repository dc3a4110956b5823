#include <gtest/gtest.h>
#include <QCoreApplication>

int main(int count, char** arguments) {
    qputenv("LC_ALL", "en_GB.UTF-8");  // the sentences that tests look for are the English ones
    QCoreApplication application(count, arguments);
    testing::InitGoogleTest(&count, arguments);
    return RUN_ALL_TESTS();
}
