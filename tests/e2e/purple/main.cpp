// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// purple-bot FOLDER [quiet] : a client made of libpurple, without a user: commands come by standard input (commands.h),
// events go to standard output (events.h), what libpurple says of itself goes to standard error, unless it is to be
// quiet. FOLDER is its own.
#include <purple.h>

#include <cstdio>
#include <string_view>

#include "commands.h"
#include "events.h"

namespace {

struct Watch {
    PurpleInputFunction function;
    gpointer data;
};

gboolean onInput(GIOChannel* channel, GIOCondition condition, gpointer data) {
    const auto* watch = static_cast<const Watch*>(data);
    int what = 0;
    if (condition & (G_IO_IN | G_IO_HUP | G_IO_ERR)) what |= PURPLE_INPUT_READ;
    if (condition & (G_IO_OUT | G_IO_HUP | G_IO_ERR | G_IO_NVAL)) what |= PURPLE_INPUT_WRITE;
    watch->function(watch->data, g_io_channel_unix_get_fd(channel), static_cast<PurpleInputCondition>(what));
    return G_SOURCE_CONTINUE;
}

guint addInput(int descriptor, PurpleInputCondition condition, PurpleInputFunction function, gpointer data) {
    int what = G_IO_HUP | G_IO_ERR | G_IO_NVAL;
    if (condition & PURPLE_INPUT_READ) what |= G_IO_IN;
    if (condition & PURPLE_INPUT_WRITE) what |= G_IO_OUT;
    GIOChannel* channel = g_io_channel_unix_new(descriptor);
    auto watch = std::make_unique<Watch>(Watch{function, data});
    const guint source = g_io_add_watch_full(channel, G_PRIORITY_DEFAULT, static_cast<GIOCondition>(what), onInput,
                                             watch.release(), [](gpointer old) { delete static_cast<Watch*>(old); });
    g_io_channel_unref(channel);
    return source;
}

void printDebug(PurpleDebugLevel, const char* category, const char* text) {
    std::fprintf(stderr, "%s: %s", category ? category : "", text);
}

/// Warnings and errors that a user would see.
void* onNotice(PurpleNotifyMsgType, const char* title, const char* primary, const char* secondary) {
    Event("trouble").text("title", title).text("primary", primary).text("secondary", secondary);
    return nullptr;
}

void startLibrary(const char* folder, bool quiet) {
    static PurpleEventLoopUiOps loop{};
    loop.timeout_add = g_timeout_add;
    loop.timeout_add_seconds = g_timeout_add_seconds;
    loop.timeout_remove = g_source_remove;
    loop.input_add = addInput;
    loop.input_remove = g_source_remove;
    static PurpleDebugUiOps debug{};
    debug.print = printDebug;
    static PurpleNotifyUiOps notices{};
    notices.notify_message = onNotice;

    purple_util_set_user_dir(folder);
    if (!quiet) purple_debug_set_ui_ops(&debug);
    purple_eventloop_set_ui_ops(&loop);
    if (!purple_core_init("purple-bot")) g_error("libpurple does not start");
    purple_notify_set_ui_ops(&notices);
    purple_set_blist(purple_blist_new());
    purple_prefs_load();
}

struct Input {
    Commands commands;
    GMainLoop* loop;
};

/// One line of standard input; its end ends the program.
gboolean onLine(GIOChannel* channel, GIOCondition, gpointer data) {
    auto* input = static_cast<Input*>(data);
    gchar* line = nullptr;
    if (g_io_channel_read_line(channel, &line, nullptr, nullptr, nullptr) != G_IO_STATUS_NORMAL) {
        g_main_loop_quit(input->loop);
        return G_SOURCE_REMOVE;
    }
    const std::string text(line);
    g_free(line);
    input->commands.run(text);
    return G_SOURCE_CONTINUE;
}

}  // namespace

int main(int count, char** arguments) {
    const bool quiet = count == 3 && std::string_view(arguments[2]) == "quiet";
    if (count != 2 && !quiet) {
        std::fputs("usage: purple-bot FOLDER [quiet]\n", stderr);
        return 2;
    }
    startLibrary(arguments[1], quiet);
    Input input{{}, g_main_loop_new(nullptr, FALSE)};
    GIOChannel* channel = g_io_channel_unix_new(0);
    g_io_add_watch(channel, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP), onLine, &input);
    Event("ready");
    g_main_loop_run(input.loop);
    purple_core_quit();
    g_io_channel_unref(channel);
    g_main_loop_unref(input.loop);
    return 0;
}
