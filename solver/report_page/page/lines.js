// Lines of the model: edges, meshes, the structure at rest, crosses, what is chosen.

import { BufferAttribute, BufferGeometry, LineSegments } from "three";
import { attribute } from "./surfaces.js";
import { lineMaterial } from "./materials.js";

/** Lines between points that move; colours by vertex, if the material asks for them. */
export class Lines {
  constructor(material) {
    this.geometry = new BufferGeometry();
    this.mesh = new LineSegments(this.geometry, material);
    this.mesh.frustumCulled = false;
  }

  /** Pairs of points: places and displacements, three each; tints from 0 to 1. */
  set(places, moves = null, tints = null) {
    const count = places.length / 3;
    this.geometry.dispose();
    const geometry = (this.mesh.geometry = this.geometry = new BufferGeometry());
    attribute(geometry, "position", count, 3).set(places);
    const move = attribute(geometry, "move", count, 3);
    if (moves) move.set(moves);
    const tint = attribute(geometry, "tint", count, 3);
    if (tints) tint.set(tints);
  }
}

/** Lines between nodes; they share the displacements of the nodes. */
export class NodeLines extends Lines {
  constructor(model, pairs, options) {
    super(lineMaterial(options));
    this.pairs = pairs;
    attribute(this.geometry, "position", model.nodeCount, 3).set(model.nodes.xyz);
    this.move = attribute(this.geometry, "move", model.nodeCount, 3);
    this.geometry.setIndex(new BufferAttribute(Uint32Array.from(pairs), 1));
  }

  /** Draws only lines between nodes that are seen; null: all. */
  setShown(nodes) {
    const seen = nodes
      ? Array.from(this.pairs).filter((_, i) => nodes[this.pairs[i & ~1]] && nodes[this.pairs[i | 1]])
      : this.pairs;
    this.geometry.setIndex(new BufferAttribute(Uint32Array.from(seen), 1));
  }

  setMove(move) {
    if (move) this.move.set(move);
    else this.move.fill(0);
    this.geometry.attributes.move.needsUpdate = true;
  }
}

/** All edges of all faces, each once. */
export function meshEdges(model) {
  const { faces, nodeCount } = model;
  const seen = new Set();
  const pairs = [];
  for (let face = 0; face < faces.element.length; ++face) {
    const [first, end] = [faces.first[face], faces.first[face + 1]];
    for (let corner = first; corner < end; ++corner) {
      const a = faces.nodes[corner],
        b = faces.nodes[corner + 1 < end ? corner + 1 : first];
      const key = a < b ? a * nodeCount + b : b * nodeCount + a;
      if (seen.has(key)) continue;
      seen.add(key);
      pairs.push(a, b);
    }
  }
  return pairs;
}

/** The lines of members at rest. */
export function memberLines(model) {
  const { members, stations } = model;
  const places = [];
  for (let member = 0; member < members.element.length; ++member) {
    for (let s = members.first[member]; s + 1 < members.first[member + 1]; ++s) {
      places.push(...stations.place.subarray(3 * s, 3 * s + 6));
    }
  }
  return places;
}

/** Outlines of one element: its faces, or its stations. Pairs of places and of displacements. */
export function elementOutline(model, element, nodeMove, stationMove) {
  const places = [],
    moves = [];
  const take = (source, move, i) => {
    for (let k = 0; k < 3; ++k) {
      places.push(source[3 * i + k]);
      moves.push(move ? move[3 * i + k] : 0);
    }
  };
  const member = model.memberOf.get(element);
  if (member !== undefined) {
    for (let s = model.members.first[member]; s + 1 < model.members.first[member + 1]; ++s) {
      take(model.stations.place, stationMove, s);
      take(model.stations.place, stationMove, s + 1);
    }
  }
  const { faces } = model;
  for (let face = 0; face < faces.element.length; ++face) {
    if (faces.element[face] !== element) continue;
    const nodes = faces.nodes.subarray(faces.first[face], faces.first[face + 1]);
    nodes.forEach((node, i) => {
      take(model.nodes.xyz, nodeMove, node);
      take(model.nodes.xyz, nodeMove, nodes[(i + 1) % nodes.length]);
    });
  }
  return { places, moves };
}
