// A host of another toolkit, which stands on GLib's loop: the component is called from a source of it, and the host's
// own sources go on while the window is open.
#include <glib.h>

#include <string>

#include "hosts/hostprogram.h"

namespace {

struct Host {
    const host::Suite& suite;
    GMainLoop* loop;
    std::string picked = {};
    int ticks = 0;
    int ticksWithin = 0;
};

gboolean tick(gpointer data) {
    ++static_cast<Host*>(data)->ticks;
    return G_SOURCE_CONTINUE;
}

gboolean order(gpointer data) {
    auto& self = *static_cast<Host*>(data);
    const int before = self.ticks;
    self.picked = host::pickedCode(self.suite);
    self.ticksWithin = self.ticks - before;
    g_main_loop_quit(self.loop);
    return G_SOURCE_REMOVE;
}

}  // namespace

int main() {
    const host::Suite suite;
    Host self{suite, g_main_loop_new(nullptr, FALSE)};
    g_timeout_add(1, tick, &self);
    g_timeout_add(5, order, &self);
    g_main_loop_run(self.loop);
    g_main_loop_unref(self.loop);
    host::expect(!self.picked.empty(), "an item is picked");
    host::expect(self.ticksWithin > 0, "the host's timers go on while the window is open");
    return 0;
}
