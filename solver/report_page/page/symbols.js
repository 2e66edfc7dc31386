// Supports, loads, reactions, local axes, hinges: one shape each, drawn once for every place.

import {
  BoxGeometry,
  ConeGeometry,
  CylinderGeometry,
  InstancedBufferAttribute,
  InstancedBufferGeometry,
  Mesh,
  SphereGeometry,
} from "three";
import { mergeGeometries } from "three/addons/utils/BufferGeometryUtils.js";
import { symbolMaterial } from "./materials.js";

// Shapes stand along z with their tip at the origin and have length 1.
function cone(radius, length, tip) {
  return new ConeGeometry(radius, length, 16).rotateX(Math.PI / 2).translate(0, 0, tip - length / 2);
}

const SHAPES = {
  cone: () => cone(0.36, 1, 0),
  disc: () => new CylinderGeometry(0.5, 0.5, 0.12, 20).rotateX(Math.PI / 2),
  box: () => new BoxGeometry(0.9, 0.9, 0.9),
  ball: () => new SphereGeometry(0.5, 20, 14),
  arrow: () =>
    mergeGeometries([
      cone(0.09, 0.3, 0),
      new CylinderGeometry(0.025, 0.025, 0.72, 8).rotateX(Math.PI / 2).translate(0, 0, -0.64),
    ]),
  thin: () =>
    mergeGeometries([
      cone(0.09, 0.26, 0),
      new CylinderGeometry(0.012, 0.012, 0.8, 6).rotateX(Math.PI / 2).translate(0, 0, -0.6),
    ]),
  twofold: () =>
    mergeGeometries([
      cone(0.09, 0.25, 0),
      cone(0.09, 0.25, -0.2),
      new CylinderGeometry(0.025, 0.025, 0.6, 8).rotateX(Math.PI / 2).translate(0, 0, -0.7),
    ]),
  axis: () =>
    mergeGeometries([
      cone(0.09, 0.25, 1),
      new CylinderGeometry(0.03, 0.03, 0.76, 8).rotateX(Math.PI / 2).translate(0, 0, 0.38),
    ]),
};

/** Collects symbols by shape, then makes a mesh of each shape. */
export class Symbols {
  constructor({ onTop = false } = {}) {
    this.material = symbolMaterial({ onTop });
    this.byShape = new Map();
  }

  add(shape, place, move, direction, size, tint) {
    if (!this.byShape.has(shape)) this.byShape.set(shape, { place: [], move: [], direction: [], size: [], tint: [] });
    const list = this.byShape.get(shape);
    list.place.push(...place);
    list.move.push(...(move ?? [0, 0, 0]));
    list.direction.push(...direction);
    list.size.push(size);
    list.tint.push(...tint);
  }

  meshes() {
    return [...this.byShape].map(([shape, list]) => {
      const geometry = new InstancedBufferGeometry();
      const base = SHAPES[shape]();
      geometry.setIndex(base.index);
      geometry.setAttribute("position", base.attributes.position);
      for (const [name, values] of Object.entries(list)) {
        geometry.setAttribute(name, new InstancedBufferAttribute(Float32Array.from(values), name === "size" ? 1 : 3));
      }
      geometry.instanceCount = list.size.length;
      const mesh = new Mesh(geometry, this.material);
      mesh.frustumCulled = false;
      mesh.name = shape;
      return mesh;
    });
  }
}

const AXES = [
  [1, 0, 0],
  [0, 1, 0],
  [0, 0, 1],
];
const HELD = [0.05, 0.5, 0.42];
const FORCE = [0.8, 0.18, 0.12],
  MOMENT = [0.62, 0.2, 0.62],
  REACTION = [0.1, 0.45, 0.75];
const X = [0.85, 0.15, 0.15],
  Y = [0.1, 0.6, 0.2],
  Z = [0.15, 0.3, 0.85];

const triple = (array, i, width = 3, offset = 0) => array.subarray(width * i + offset, width * i + offset + 3);

// Many symbols side by side are smaller.
function sizeFor(model, count, share) {
  return (share * model.size) / (1 + 0.6 * Math.log10(Math.max(1, count / 12)));
}

// Rotations of nodes that only solids join are held because nothing resists them; and what is held at most nodes, as in
// a plane problem, belongs to the model as a whole. Neither says where the structure stands.
function tellingFreedoms(model, supports) {
  const counts = [0, 0, 0, 0, 0, 0];
  for (const dofs of supports.dofs)
    counts.forEach((_, k) => {
      if (dofs & (1 << k)) ++counts[k];
    });
  const solids = (model.solidNodes ??= nodesOfSolidsAlone(model));
  const many = model.nodeCount > 12 ? 0.6 * model.nodeCount : Infinity;
  const mask = counts.reduce((sum, count, k) => (count > many ? sum : sum | (1 << k)), 0);
  return Array.from(supports.dofs, (dofs, i) => dofs & mask & (solids[supports.node[i]] ? 7 : 63));
}

function nodesOfSolidsAlone(model) {
  const { first, nodes, section } = model.elements;
  const result = new Uint8Array(model.nodeCount).fill(1);
  section.forEach((number, element) => {
    if (model.sections[number]?.kind === "solid") return;
    for (let i = first[element]; i < first[element + 1]; ++i) result[nodes[i]] = 0;
  });
  return result;
}

/** Cones for held translations, discs for held rotations, a box where everything is held. */
export function supportSymbols(model, supports, move) {
  const symbols = new Symbols();
  const telling = tellingFreedoms(model, supports);
  const size = sizeFor(model, telling.filter((dofs) => dofs).length, 0.022);
  supports.node.forEach((node, i) => {
    const at = triple(model.nodes.xyz, node),
      with_ = move && triple(move, node);
    const dofs = telling[i];
    if ((dofs & 63) === 63) symbols.add("box", at, with_, AXES[2], size, HELD);
    AXES.forEach((axis, k) => {
      if ((dofs & 63) === 63) return;
      if (dofs & (1 << k)) symbols.add("cone", at, with_, axis, size, HELD);
      if (dofs & (8 << k)) symbols.add("disc", at, with_, axis, 0.9 * size, MOMENT);
    });
  });
  return symbols.meshes();
}

// Lengths from 0.3 to 1 of the longest: also a small load can be seen.
const lengthOf = (size, largest, longest) => longest * (0.3 + (0.7 * size) / largest);

/** Arrows for forces, arrows with two heads for moments; the longest belongs to the largest. */
export function forceSymbols(model, nodes, values, move, tint = FORCE) {
  const symbols = new Symbols();
  const longest = sizeFor(model, nodes.length, 0.1);
  for (const [offset, shape, colour] of [
    [0, "arrow", tint],
    [3, "twofold", tint === FORCE ? MOMENT : tint],
  ]) {
    const sizes = Array.from(nodes, (_, i) => Math.hypot(...triple(values, i, 6, offset)));
    const largest = sizes.reduce((a, b) => Math.max(a, b), 0);
    nodes.forEach((node, i) => {
      if (!(sizes[i] > 1e-6 * largest)) return;
      symbols.add(
        shape,
        triple(model.nodes.xyz, node),
        move && triple(move, node),
        triple(values, i, 6, offset),
        lengthOf(sizes[i], largest, longest),
        colour,
      );
    });
  }
  return symbols.meshes();
}

const ROW = 6; // arrows along a member, at least
const MOST_ARROWS = 1500;

/** A row of arrows along each member, whose line of tails shows how the load is spread: { element, force }, per length
    at both ends. From member to member lengths differ less than loads, as those of forces do. */
export function lineLoadSymbols(model, element, force, move) {
  const symbols = new Symbols();
  const { members, stations } = model;
  const size = (i, end) => Math.hypot(...triple(force, i, 6, 3 * end));
  const largest = Array.from(element, (_, i) => Math.max(size(i, 0), size(i, 1))).reduce((a, b) => Math.max(a, b), 0);
  const longest = sizeFor(model, element.length, 0.07);
  const count = Math.max(2, Math.min(ROW, Math.floor(MOST_ARROWS / element.length)));
  element.forEach((number, i) => {
    const member = model.memberOf.get(number);
    const [first, last] = [members.first[member], members.first[member + 1] - 1];
    const own = Math.max(size(i, 0), size(i, 1));
    for (let k = 0; k < count; ++k) {
      const t = k / (count - 1);
      const between = (source, a, b) => [0, 1, 2].map((d) => (1 - t) * source[a + d] + t * source[b + d]);
      const value = between(force, 6 * i, 6 * i + 3);
      const here = Math.hypot(...value);
      if (!(here > 1e-6 * largest)) continue;
      const station = first + Math.round(t * (last - first));
      symbols.add(
        "thin",
        between(stations.place, 3 * first, 3 * last),
        move && triple(move, station),
        value,
        (lengthOf(own, largest, longest) * here) / own,
        FORCE,
      );
    }
  });
  return symbols.meshes();
}

/** An arrow in the middle of elements that carry a load per area or volume; of many elements some. */
export function elementLoadSymbols(model, element, force, move) {
  const symbols = new Symbols();
  const sizes = Array.from(element, (_, i) => Math.hypot(...triple(force, i)));
  const largest = sizes.reduce((a, b) => Math.max(a, b), 0);
  const stride = Math.ceil(element.length / 400);
  const longest = sizeFor(model, element.length / stride, 0.07);
  for (let i = 0; i < element.length; i += stride) {
    if (!(sizes[i] > 1e-6 * largest)) continue;
    symbols.add(
      "thin",
      middleOf(model, element[i], model.nodes.xyz),
      move && middleOf(model, element[i], move),
      triple(force, i),
      lengthOf(sizes[i], largest, longest),
      FORCE,
    );
  }
  return symbols.meshes();
}

export const reactionSymbols = (model, nodes, values, move) => forceSymbols(model, nodes, values, move, REACTION);

function cross(a, b) {
  return [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]];
}

function middleOf(model, element, source) {
  const { first, nodes } = model.elements;
  const sum = [0, 0, 0];
  for (let i = first[element]; i < first[element + 1]; ++i) {
    for (let k = 0; k < 3; ++k) sum[k] += source[3 * nodes[i] + k];
  }
  return sum.map((value) => value / (first[element + 1] - first[element]));
}

/** Axes x or 1 red, y or 2 green, z or the normal blue, in the middle of elements. */
export function axesSymbols(model, axes, shown) {
  const symbols = new Symbols({ onTop: true });
  const chosen = [];
  for (let element = 0; element < model.elementCount; ++element) {
    if (axes.length >= 6 * (element + 1) && (!shown || shown[element])) chosen.push(element);
  }
  const size = sizeFor(model, chosen.length, 0.05);
  const stride = Math.ceil(chosen.length / 4000);
  for (let i = 0; i < chosen.length; i += stride) {
    const x = triple(axes, chosen[i], 6),
      z = triple(axes, chosen[i], 6, 3);
    if (!(Math.hypot(...x) > 0 && Math.hypot(...z) > 0)) continue;
    const at = middleOf(model, chosen[i], model.nodes.xyz);
    [
      [x, X],
      [cross(z, x), Y],
      [z, Z],
    ].forEach(([axis, tint]) => symbols.add("axis", at, null, axis, size, tint));
  }
  return symbols.meshes();
}

/** Balls: hinges, and the marks of least and largest values. */
export function ballSymbols(model, places, moves, tints, share = 0.016) {
  const symbols = new Symbols({ onTop: true });
  places.forEach((place, i) => symbols.add("ball", place, moves?.[i], AXES[2], share * model.size, tints[i]));
  return symbols.meshes();
}
