# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Drives terminal messengers and a private server: the conversation of ./run, and the ground of the tests in tests/e2e."""
