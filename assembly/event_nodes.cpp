// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Where published events go: node, payload, member of a part.
#include "assembly/account_parts.h"
#include "router/namespaces.h"

namespace protolink {

namespace {

using A = AccountParts;

// clang-format off
constexpr EventNode<A> kEventNodes[] = {
    {ns::kAvatarMetadata, u"metadata", itemTo<&A::contactAvatars, &ContactAvatars::onAvatarMetadata>},
    {ns::kTune, u"tune", itemTo<&A::userTune, &UserTune::onTuneEvent>},
    {ns::kMood, u"mood", itemTo<&A::userMood, &UserMood::onMoodEvent>},
    {ns::kLocation, u"geoloc", itemTo<&A::userLocation, &UserLocation::onGeolocEvent>},
};
// clang-format on

}  // namespace

std::span<const EventNode<AccountParts>> accountEventNodes() { return kEventNodes; }

}  // namespace protolink
