# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT

# What a deployer sets: -DPROTOLINK_...=... when the build is configured.
set(PROTOLINK_CAPS_NODE "https://protolink.example/caps/" CACHE STRING "URI of the client family, ends in a slash")
set(PROTOLINK_LEGAL_LINE "Copyright (C) 2026 the protoLink developers" CACHE STRING "Legal line of the description")
set(PROTOLINK_AUTHOR "protoLink developers" CACHE STRING "Author in the description")
set(PROTOLINK_EMAIL "dev@protolink.example" CACHE STRING "E-mail address in the description")
set(PROTOLINK_SITE "https://protolink.example/" CACHE STRING "Web address in the description")
set(PROTOLINK_UPDATE_URL "https://protolink.example/update.xml" CACHE STRING "Address of the update description")
set(PROTOLINK_AQQ_DOMAIN "aqq.eu" CACHE STRING "Domain of the AQQ network")
set(PROTOLINK_WEB_MAIL "https://mail.google.com/mail/" CACHE STRING "Web mail page of mail notifications")
set(PROTOLINK_PROXY_HOST "" CACHE STRING "Default proxy host of an account")
configure_file(${PROJECT_SOURCE_DIR}/plugin/deployment.h.in ${PROJECT_BINARY_DIR}/generated/plugin/deployment.h @ONLY)
