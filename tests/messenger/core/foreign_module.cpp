// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
extern "C" int queryPlugInfo() { return 0; }
