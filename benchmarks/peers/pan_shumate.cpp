// libshumate's path layer over an empty map, panned as the protocol says: one figure a size and a sight.

#include <shumate/shumate.h>

#include "pan_protocol.h"

namespace {

using namespace fleetor;

struct Run {
  GMainLoop* loop = nullptr;
  ShumateMap* map = nullptr;
  ShumatePathLayer* path = nullptr;
  std::size_t size = 0;
  std::size_t sight = 0;
  int frame = 0;
  double started = 0;
  std::vector<double> times;

  int points() const { return size == 0 ? 0 : pan::sizes[size - 1]; }

  void begin() {
    frame = 0;
    times.clear();
    shumate_viewport_set_zoom_level(shumate_map_get_viewport(map), pan::sights[sight].zoom);
    shumate_path_layer_remove_all(path);
    if (points() == 0) return;
    for (const auto& place : pan::track(points()))
      shumate_path_layer_add_node(
          path, SHUMATE_LOCATION(shumate_coordinate_new_full(place.latitude, place.longitude)));
  }

  void step() {
    if (frame > pan::warmUpFrames + pan::frames) {
      pan::report("libshumate 1.0", points(), pan::sights[sight].name, times);
      if (++sight == pan::sights.size()) {
        sight = 0;
        if (++size > pan::sizes.size()) return g_main_loop_quit(loop);
      }
      begin();
    }
    const auto centre = pan::centre(pan::sights[sight], frame++);
    shumate_location_set_location(SHUMATE_LOCATION(shumate_map_get_viewport(map)), centre.latitude,
                                  centre.longitude);
  }
};

}  // namespace

int main() {
  if (!gtk_init_check()) {
    std::fprintf(stderr, "no display\n");
    return 1;
  }
  Run run;
  run.loop = g_main_loop_new(nullptr, FALSE);
  run.map = shumate_map_new();
  auto* const registry = shumate_map_source_registry_new_with_defaults();
  ShumateViewport* const viewport = shumate_map_get_viewport(run.map);
  shumate_viewport_set_reference_map_source(
      viewport, shumate_map_source_registry_get_by_id(registry, SHUMATE_MAP_SOURCE_OSM_MAPNIK));
  run.path = shumate_path_layer_new(viewport);
  shumate_path_layer_set_stroke_width(run.path, pan::lineWidth);
  shumate_map_add_layer(run.map, SHUMATE_LAYER(run.path));

  GtkWidget* const window = gtk_window_new();
  gtk_window_set_decorated(GTK_WINDOW(window), FALSE);
  gtk_window_set_default_size(GTK_WINDOW(window), pan::width, pan::height);
  gtk_window_set_child(GTK_WINDOW(window), GTK_WIDGET(run.map));
  gtk_window_present(GTK_WINDOW(window));
  run.begin();

  gtk_widget_add_tick_callback(
      window,
      [](GtkWidget*, GdkFrameClock*, gpointer data) -> gboolean {
        static_cast<Run*>(data)->step();
        return G_SOURCE_CONTINUE;
      },
      &run, nullptr);
  GdkFrameClock* const clock = gtk_widget_get_frame_clock(window);
  g_signal_connect(clock, "before-paint", G_CALLBACK(+[](GdkFrameClock*, gpointer data) {
                     static_cast<Run*>(data)->started = pan::now();
                   }),
                   &run);
  g_signal_connect_after(clock, "after-paint", G_CALLBACK(+[](GdkFrameClock*, gpointer data) {
                           auto& run = *static_cast<Run*>(data);
                           if (run.frame > pan::warmUpFrames) run.times.push_back(pan::now() - run.started);
                         }),
                         &run);
  g_main_loop_run(run.loop);
  return 0;
}
