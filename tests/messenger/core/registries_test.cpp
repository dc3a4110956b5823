// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "messenger/core/boundary/event_registry.h"
#include "messenger/core/boundary/host_table.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"

namespace oku::test {
namespace {

OKU_WORD addUp(OKU_WORD param, OKU_WORD extra, OKU_WORD context) { return param + extra + context; }

TEST(ServiceRegistry, CallsByNameWithTheContext) {
    ServiceRegistry services;
    const OKU_WORD handle = services.create(u"XMPP/1/PFRawSend", addUp, 100);
    EXPECT_NE(handle, 0);
    EXPECT_EQ(services.call(u"XMPP/1/PFRawSend", 10, 1), 111);
    services.destroy(handle);
    EXPECT_EQ(services.call(u"XMPP/1/PFRawSend", 10, 1), 0);
    services.destroy(handle);
    services.destroy(12345);
}

TEST(ServiceRegistry, RefusesATakenName) {
    ServiceRegistry services;
    services.provide(u"OKU/Log", [](OKU_WORD, OKU_WORD) -> OKU_WORD { return 7; });
    EXPECT_EQ(services.create(u"OKU/Log", addUp, 0), 0);
    EXPECT_NE(services.create(u"A", addUp, 0), 0);
    EXPECT_EQ(services.create(u"A", addUp, 0), 0);
    EXPECT_EQ(services.create(u"B", nullptr, 0), 0);
    services.dropPlugin();
    EXPECT_EQ(services.call(u"OKU/Log", 0, 0), 7);
    EXPECT_FALSE(services.has(u"A"));
}

struct Scene {
    EventRegistry events;
    std::string trace;
    OKU_WORD first = 0;
    OKU_WORD second = 0;
    OKU_WORD third = 0;
};

TEST(EventRegistry, CallsHandlersInOrderUpToTheFirstThatObjects) {
    Scene scene;
    const auto note = [](OKU_WORD param, OKU_WORD, OKU_WORD context) -> OKU_WORD {
        reinterpret_cast<Scene*>(context)->trace += static_cast<char>('a' + param);
        return param == 1 ? 5 : 0;
    };
    scene.events.addHook(u"E", note, wordOf(&scene));
    scene.events.addHook(u"E", note, wordOf(&scene));
    scene.events.addHook(u"F", note, wordOf(&scene));
    EXPECT_EQ(scene.events.fire(u"E", 0, 0), 0);
    EXPECT_EQ(scene.trace, "aa");
    EXPECT_EQ(scene.events.fire(u"E", 1, 0), 5);
    EXPECT_EQ(scene.trace, "aab");
}

TEST(EventRegistry, BearsHandlersThatChangeTheListWhileItIsWalked) {
    Scene scene;
    scene.first = scene.events.addHook(
        u"E",
        [](OKU_WORD, OKU_WORD, OKU_WORD context) -> OKU_WORD {
            auto& inner = *reinterpret_cast<Scene*>(context);
            inner.trace += '1';
            inner.events.removeHook(inner.first);
            inner.events.removeHook(inner.second);
            inner.events.addHook(
                u"E",
                [](OKU_WORD, OKU_WORD, OKU_WORD added) -> OKU_WORD {
                    reinterpret_cast<Scene*>(added)->trace += '4';
                    return 0;
                },
                context);
            return 0;
        },
        wordOf(&scene));
    const auto number = [](OKU_WORD, OKU_WORD, OKU_WORD context) -> OKU_WORD {
        reinterpret_cast<Scene*>(context)->trace += '2';
        return 0;
    };
    scene.second = scene.events.addHook(u"E", number, wordOf(&scene));
    scene.third = scene.events.addHook(
        u"E",
        [](OKU_WORD, OKU_WORD, OKU_WORD context) -> OKU_WORD {
            reinterpret_cast<Scene*>(context)->trace += '3';
            return 0;
        },
        wordOf(&scene));
    scene.events.fire(u"E", 0, 0);
    EXPECT_EQ(scene.trace, "13");
    scene.events.fire(u"E", 0, 0);
    EXPECT_EQ(scene.trace, "1334");
}

TEST(EventRegistry, TellsTheListenersOfAnEventOfThePlugin) {
    EventRegistry events;
    const OKU_WORD event = events.createEvent(u"XMPP/OnPEPEvent");
    events.addHook(u"XMPP/OnPEPEvent", addUp, 0);
    EXPECT_EQ(events.notify(event, 3, 4), 7);
    events.destroyEvent(event);
    EXPECT_EQ(events.notify(event, 3, 4), 0);
    EXPECT_EQ(events.notify(9999, 3, 4), 0);
}

TEST(HostTable, LetsNoExceptionOutAndNeedsACurrentHost) {
    const auto* table = HostTable::table();
    EXPECT_EQ(table->fnCall(u"X", 0, 0), 0);
    ServiceRegistry services;
    EventRegistry events;
    PluginQueue queue;
    QStringList reasons;
    QObject::connect(&queue, &PluginQueue::failed, &queue, [&](const QString& reason) { reasons.append(reason); });
    services.provide(u"X", [](OKU_WORD, OKU_WORD) -> OKU_WORD { throw std::runtime_error("boom"); });
    services.provide(u"Y", [](OKU_WORD, OKU_WORD) -> OKU_WORD { return 3; });
    {
        const HostTable host(services, events, queue);
        EXPECT_EQ(table->fnCall(u"X", 0, 0), 0);
        EXPECT_EQ(table->fnCall(u"Y", 0, 0), 3);
        EXPECT_EQ(table->fnCall(nullptr, 0, 0), 0);
        EXPECT_EQ(reasons, QStringList("boom"));
    }
    EXPECT_EQ(table->fnCall(u"Y", 0, 0), 0);
}

}  // namespace
}  // namespace oku::test
