// Principal directions of plates as crosses: tension blue, pressure red, as long as the stress.

import { principalPlane } from "./fields.js";

const TENSION = [0.1, 0.35, 0.85],
  PRESSURE = [0.85, 0.15, 0.1];
const MOST = 40000;

function meanEdge(model) {
  const { faces, nodes } = model;
  let sum = 0,
    count = 0;
  const stride = Math.max(1, Math.floor(faces.element.length / 500));
  for (let face = 0; face < faces.element.length; face += stride) {
    const a = faces.nodes[faces.first[face]],
      b = faces.nodes[faces.first[face] + 1];
    sum += Math.hypot(...[0, 1, 2].map((k) => nodes.xyz[3 * a + k] - nodes.xyz[3 * b + k]));
    ++count;
  }
  return count ? sum / count : 0.05 * model.size;
}

// Where an item of a field is, with its axes x and normal; displacement included.
function placesOf(model, field, elementAxes, move) {
  const { plateParts, nodes, elements } = model;
  const axes = field.on === "plate_part" ? plateParts.axes : elementAxes;
  const at = (item, source) => {
    if (field.on === "plate_part")
      return source ? source.subarray(3 * plateParts.node[item], 3 * plateParts.node[item] + 3) : [0, 0, 0];
    const own = elements.nodes.subarray(elements.first[item], elements.first[item + 1]);
    return [0, 1, 2].map((k) => (source ? own.reduce((sum, node) => sum + source[3 * node + k], 0) / own.length : 0));
  };
  return (item) => ({
    place: at(item, nodes.xyz),
    move: at(item, move),
    x: axes.subarray(6 * item, 6 * item + 3),
    normal: axes.subarray(6 * item + 3, 6 * item + 6),
  });
}

/** Pairs of points with displacements and tints; empty, if the field has no principal directions. */
export function crossesOf(model, field, values, elementAxes, move) {
  const result = { places: [], moves: [], tints: [] };
  if (field?.form !== "plane_stress") return result;
  const count = values.length / 3;
  const where = placesOf(model, field, elementAxes, move);
  const stresses = (i) => principalPlane(values[3 * i], values[3 * i + 1], values[3 * i + 2]);
  let largest = 0;
  for (let i = 0; i < count; ++i) {
    const { s1, s2 } = stresses(i);
    if (Number.isFinite(s1)) largest = Math.max(largest, Math.abs(s1), Math.abs(s2));
  }
  const arm = (0.48 * meanEdge(model)) / (largest || 1);
  for (let i = 0; i < count; i += Math.ceil(count / MOST)) {
    const { s1, s2, angle } = stresses(i);
    if (!Number.isFinite(s1)) continue;
    const { place, move: moved, x, normal } = where(i);
    addArm(result, place, moved, x, normal, angle, s1, arm);
    addArm(result, place, moved, x, normal, angle + 90, s2, arm);
  }
  return result;
}

function addArm(result, place, move, x, normal, angle, stress, arm) {
  const c = Math.cos((angle * Math.PI) / 180),
    s = Math.sin((angle * Math.PI) / 180);
  const y = [
    normal[1] * x[2] - normal[2] * x[1],
    normal[2] * x[0] - normal[0] * x[2],
    normal[0] * x[1] - normal[1] * x[0],
  ];
  for (const side of [-1, 1]) {
    for (let k = 0; k < 3; ++k) result.places.push(place[k] + side * arm * Math.abs(stress) * (c * x[k] + s * y[k]));
    result.moves.push(...move);
    result.tints.push(...(stress >= 0 ? TENSION : PRESSURE));
  }
}
