# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""What the end-to-end tests stand on: servers, the other side, and scripted trouble."""
