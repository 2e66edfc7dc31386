// Diagrams on the model: ribbons between the members and their values, on the side of the tension for moments.

import { BufferAttribute, BufferGeometry, Mesh } from "three";
import { attribute } from "./surfaces.js";
import { Lines } from "./lines.js";
import { lineMaterial, ribbonMaterial } from "./materials.js";
import { namedPoints, profileOf } from "./diagrams.js";
import { boxOf, cornersOf } from "./model.js";
import { seriesOf } from "./steps.js";
import { show } from "./format.js";

const POSITIVE = [0.1, 0.38, 0.78],
  NEGATIVE = [0.82, 0.24, 0.12];
const MOST_LABELS = 60;

function tipOf(model, member, s, quantity, length) {
  const axis = model.members.axes.subarray(9 * member + 3 * quantity.axis, 9 * member + 3 * quantity.axis + 3);
  return [0, 1, 2].map((k) => model.stations.place[3 * s + k] + quantity.sign * length * axis[k]);
}

// Two points a station: one on the member, one at the value.
function strip(model, values, quantity, factor, shown) {
  const { members, stations } = model;
  const count = stations.distance.length;
  const places = new Float32Array(6 * count),
    tints = new Float32Array(6 * count);
  const triangles = [],
    outline = [];
  members.element.forEach((element, member) => {
    if (shown && !shown[element]) return;
    const [first, end] = [members.first[member], members.first[member + 1]];
    for (let s = first; s < end; ++s) {
      const value = Number.isFinite(values[s]) ? values[s] : 0;
      places.set(stations.place.subarray(3 * s, 3 * s + 3), 6 * s);
      places.set(tipOf(model, member, s, quantity, factor * value), 6 * s + 3);
      const tint = value >= 0 ? POSITIVE : NEGATIVE;
      tints.set([...tint, ...tint], 6 * s);
      if (s > first) {
        triangles.push(2 * s - 2, 2 * s, 2 * s - 1, 2 * s - 1, 2 * s, 2 * s + 1);
        outline.push(2 * s - 1, 2 * s + 1);
      }
    }
    outline.push(2 * first, 2 * first + 1, 2 * end - 2, 2 * end - 1);
  });
  return { places, tints, triangles, outline };
}

function doubled(move, count) {
  const result = new Float32Array(6 * count);
  if (move)
    for (let s = 0; s < count; ++s)
      result.set([...move.subarray(3 * s, 3 * s + 3), ...move.subarray(3 * s, 3 * s + 3)], 6 * s);
  return result;
}

function meshes(model, { places, tints, triangles, outline }, move) {
  const moves = doubled(move, places.length / 6);
  const geometry = new BufferGeometry();
  attribute(geometry, "position", places.length / 3, 3).set(places);
  attribute(geometry, "move", places.length / 3, 3).set(moves);
  attribute(geometry, "tint", places.length / 3, 3).set(tints);
  geometry.setIndex(new BufferAttribute(Uint32Array.from(triangles), 1));
  const area = new Mesh(geometry, ribbonMaterial(0.35));
  area.frustumCulled = false;
  area.name = "ribbon";
  area.renderOrder = 1;
  const lines = new Lines(lineMaterial({ tinted: true }));
  const take = (source) => Float32Array.from(outline.flatMap((i) => [...source.subarray(3 * i, 3 * i + 3)]));
  lines.set(take(places), take(moves), take(tints));
  return [area, lines.mesh];
}

function labelsOf(model, values, quantity, factor, size, shown, move) {
  const labels = [];
  model.members.element.forEach((element, member) => {
    if (shown && !shown[element]) return;
    const first = model.members.first[member];
    const points = profileOf(model, [member], values);
    for (const point of namedPoints(points)) {
      if (!(Math.abs(point.value) > 0.02 * size)) continue;
      const s = first + points.indexOf(point);
      labels.push({
        place: tipOf(model, member, s, quantity, factor * point.value),
        rank: Math.abs(point.value) / size,
        move: move?.subarray(3 * s, 3 * s + 3),
        text: show(point.value, 4),
        className: "value",
      });
    }
  });
  return labels.sort((a, b) => b.rank - a.rank).slice(0, MOST_LABELS);
}

// The corners of the box around a diagram, where the deflected shape carries it.
function tipBox(places, move, scale) {
  const moves = doubled(move, places.length / 6);
  const { low, high } = boxOf(places.map((x, i) => x + scale * moves[i]));
  return cornersOf(low, high);
}

/** Size (null: there are no values), meshes and labels of a quantity on the model; `stretch` multiplies the automatic
    size, `scale` the displacements. */
export async function ribbonsOf(report, model, state, quantity, { stretch, scale, shown, move }) {
  const series = await seriesOf(report, model, state, quantity.name);
  const size = series.reduce(
    (most, { values }) => values.reduce((a, b) => (Math.abs(b) > a ? Math.abs(b) : a), most),
    0,
  );
  if (!(size > 0)) return { meshes: [], labels: [], tips: [], size: series.length ? 0 : null };
  const factor = (0.1 * stretch * model.size) / size;
  const strips = series.map(({ values }) => strip(model, values, quantity, factor, shown));
  return {
    size,
    tips: strips.flatMap(({ places }) => tipBox(places, move, scale)),
    meshes: strips.flatMap((each) => meshes(model, each, move)),
    labels: series.flatMap(({ values }) => labelsOf(model, values, quantity, factor, size, shown, move)),
  };
}
