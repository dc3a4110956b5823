// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What no transcript can say of the ways to move a file.
#include <gtest/gtest.h>

#include <type_traits>

#include "transfer/transfer_ibb.h"
#include "transfer/transfer_oob.h"
#include "transfer/transfer_socks.h"

using namespace protolink;

namespace {

TEST(Transports, OneHasItsPlaceAndNoInstance) {
    EXPECT_TRUE((std::is_base_of_v<CTransferBase, CTransferSocks>));
    EXPECT_TRUE(std::is_abstract_v<CTransferSocks>);
    EXPECT_FALSE(std::is_abstract_v<CTransferIBB>);
    EXPECT_FALSE(std::is_abstract_v<CTransferOOB>);
}

}  // namespace
