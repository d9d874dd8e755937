#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "coordinates/conversions.h"

// Conversions on a map with 1,200 samples a line, turned and bent, over places all over the map. The bare linear
// interpolation of two coordinates is measured beside them.

namespace {

constexpr int width = 6000, height = 6000, samples = 1203;

template <typename Place>
void Sample(NetLine& line, std::vector<std::int16_t>& pixels, int n, Place place) {
  line.Start = -5;
  line.Step = 5;
  line.Count = samples;
  line.Kind = 1;
  pixels.assign(samples + 1, 0);
  for (int k = 1; k <= samples; ++k)
    pixels[static_cast<size_t>(k)] = static_cast<std::int16_t>(std::lround(place(n, -5 + (k - 1) * 5.0)));
}

CoordinateState Net() {
  CoordinateState state;
  state.Grid = gridGeographic;
  state.MapWidthPx = width;
  state.MapHeightPx = height;
  for (int n = 1; n <= 3; ++n) {
    const auto i = static_cast<size_t>(n);
    state.NetB[i].Deg64 = 49.8 - 0.1 * n;
    state.NetL[i].Deg64 = 11 + 0.1 * n;
    state.NetB[i].Deg = static_cast<float>(state.NetB[i].Deg64);
    state.NetL[i].Deg = static_cast<float>(state.NetL[i].Deg64);
    Sample(state.NetB[i], state.NetBPix[i], n,
           [](int line, double x) { return 2000.0 * line - 1000 + x * 0.03 + 40 * std::sin(x / 1500); });
    Sample(state.NetL[i], state.NetLPix[i], n,
           [](int line, double y) { return 2000.0 * line - 1000 - y * 0.03 + 40 * std::cos(y / 1500); });
  }
  return state;
}

struct Place {
  int x = 0, y = 0;
  double longitude = 0, latitude = 0;
};

std::vector<Place> Places(const CoordinateState& state) {
  std::vector<Place> places;
  for (int y = 50; y < height; y += 311)
    for (int x = 50; x < width; x += 307) {
      Place place{x, y, 0, 0};
      Pixel_To_Grad(state, x, y, place.longitude, place.latitude);
      places.push_back(place);
    }
  return places;
}

// The work on every place of the map.
template <class Work>
void On_Every_Place(benchmark::State& state, Work work) {
  const CoordinateState net = Net();
  const std::vector<Place> places = Places(net);
  for (auto _ : state)
    for (const Place& place : places) work(net, place);
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(places.size()));
}

void BM_Linear_Interpolation(benchmark::State& state) {
  On_Every_Place(state, [](const CoordinateState&, const Place& place) {
    benchmark::DoNotOptimize((place.longitude - 11.1) / 0.2 * 4000 + 1000);
    benchmark::DoNotOptimize((49.7 - place.latitude) / 0.2 * 4000 + 1000);
  });
}
BENCHMARK(BM_Linear_Interpolation);

void BM_Grad_To_Pixel(benchmark::State& state) {
  double x = 0, y = 0;
  On_Every_Place(state, [&](const CoordinateState& net, const Place& place) {
    benchmark::DoNotOptimize(Grad_To_Pixel(net, place.longitude, place.latitude, x, y));
  });
}
BENCHMARK(BM_Grad_To_Pixel);

// Places beside the map: the curves do not meet on it and are followed beyond their ends.
void BM_Grad_To_Pixel_Beside(benchmark::State& state) {
  double x = 0, y = 0;
  On_Every_Place(state, [&](const CoordinateState& net, const Place& place) {
    benchmark::DoNotOptimize(Grad_To_Pixel(net, place.longitude + 0.5, place.latitude, x, y));
  });
}
BENCHMARK(BM_Grad_To_Pixel_Beside);

void BM_Pixel_To_Grad(benchmark::State& state) {
  double longitude = 0, latitude = 0;
  On_Every_Place(state, [&](const CoordinateState& net, const Place& place) {
    benchmark::DoNotOptimize(Pixel_To_Grad(net, place.x, place.y, longitude, latitude));
  });
}
BENCHMARK(BM_Pixel_To_Grad);

void BM_Koord_There_And_Back(benchmark::State& state) {
  CoordinateState net;
  net.MapWidthPx = width;
  net.MapHeightPx = height;
  net.MeterPerPix = 2.1162;
  net.Inclin = 0.02;
  int x = 0, y = 0;
  for (auto _ : state)
    for (int i = 0; i < 1000; ++i) {
      const QPointF place = Pixel_To_Koord(net, i * 5, i * 3);
      benchmark::DoNotOptimize(Koord_To_Pixel(net, static_cast<int>(place.x()), static_cast<int>(place.y()), x, y));
    }
  state.SetItemsProcessed(state.iterations() * 1000);
}
BENCHMARK(BM_Koord_There_And_Back);

}  // namespace
