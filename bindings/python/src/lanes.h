// lanes.h: the batches of elements.h over arrays of records. A batch takes from arrays what it lists, and the rest from
// one element: where elements differ in the rest too, they are called one by one. Both ways give the same bits. Offsets
// and angles count as the rest: elements that differ in them are called one by one.
#ifndef FINITES_PYTHON_LANES_H
#define FINITES_PYTHON_LANES_H

#include <cstring>

#include "run.h"

// The value of one field in an array of records, as an array with a stride.
template <class Record>
finites_reals column(const Record* first, const double* field) {
  static_assert(sizeof(Record) % sizeof(double) == 0, "records are a whole number of reals");
  (void)first;
  return {field, static_cast<int64_t>(sizeof(Record) / sizeof(double))};
}

inline finites_plates batch_of(const finites_plate* first, int64_t count) {
  finites_plates batch{};
  batch.common = *first;
  batch.count = count;
  batch.xyz = column(first, &first->xyz[0][0]);
  batch.thickness = column(first, &first->thickness);
  batch.E = column(first, &first->E);
  batch.nu = column(first, &first->nu);
  batch.density = column(first, &first->density);
  return batch;
}

inline finites_beams batch_of(const finites_beam* first, int64_t count) {
  finites_beams batch{};
  batch.common = *first;
  batch.count = count;
  batch.xyz = column(first, &first->xyz[0][0]);
  batch.up = column(first, first->up);
  batch.E = column(first, &first->E);
  batch.G = column(first, &first->G);
  batch.density = column(first, &first->density);
  batch.area = column(first, &first->area);
  batch.Iz = column(first, &first->Iz);
  batch.Iy = column(first, &first->Iy);
  batch.J = column(first, &first->J);
  return batch;
}

inline finites_solids batch_of(const finites_solid* first, int64_t count) {
  finites_solids batch{};
  batch.common = *first;
  batch.count = count;
  batch.xyz = column(first, &first->xyz[0][0]);
  batch.E = column(first, &first->E);
  batch.nu = column(first, &first->nu);
  batch.density = column(first, &first->density);
  return batch;
}

// A record with the fields that a batch takes from arrays made those of another one.
inline finites_plate rest_of(finites_plate plate, const finites_plate& other) {
  std::memcpy(plate.xyz, other.xyz, sizeof plate.xyz);
  plate.thickness = other.thickness;
  plate.E = other.E;
  plate.nu = other.nu;
  plate.density = other.density;
  return plate;
}

inline finites_beam rest_of(finites_beam beam, const finites_beam& other) {
  std::memcpy(beam.xyz, other.xyz, sizeof beam.xyz);
  std::memcpy(beam.up, other.up, sizeof beam.up);
  beam.E = other.E;
  beam.G = other.G;
  beam.density = other.density;
  beam.area = other.area;
  beam.Iz = other.Iz;
  beam.Iy = other.Iy;
  beam.J = other.J;
  return beam;
}

inline finites_solid rest_of(finites_solid solid, const finites_solid& other) {
  std::memcpy(solid.xyz, other.xyz, sizeof solid.xyz);
  solid.E = other.E;
  solid.nu = other.nu;
  solid.density = other.density;
  return solid;
}

// Records are filled from zero, and their padding with them: equal bytes are equal fields.
template <class Record>
bool rest_is_common(const Record* first, int64_t begin, int64_t end) {
  return std::all_of(first + begin, first + end, [=](const Record& record) {
    const Record rest = rest_of(record, *first);
    return std::memcmp(&rest, first, sizeof rest) == 0;
  });
}

// As one_by_one; where a batch can hold the elements, in lanes: batch(elements, begin, end, given..., out, size,
// failed).
template <class Record, class T, class Batch, class Call, class... Given>
Answer in_lanes(const Records<Record>& elements, py::array_t<T, py::array::c_style>& values, int64_t size, int threads,
                Batch batch, Call call, Given... given) {
  const int64_t count = length(elements);
  const Record* first = elements.data();
  T* out = output(values, count, size, "out");
  return run(count, threads, [=](int64_t begin, int64_t end, int64_t* failed) {
    if (!rest_is_common(first, begin, end)) {
      return each([=](int64_t e) { return call(first + e, given(e)..., out + e * size); })(begin, end, failed);
    }
    const auto all = batch_of(first, count);
    return batch(&all, begin, end, given.reals()..., out, size, failed);
  });
}

#endif
