// Members: the outline of the section, drawn along the stations; a thin round bar, where no outline is known.

import { ShapeUtils, Vector2 } from "three";
import { Surface } from "./surfaces.js";
import { MISSING } from "./materials.js";

const LARGEST = 3e6; // vertices: more would not turn smoothly
const BAR = 6; // corners of a bar
const BAR_SIZE = 0.0022; // its radius over the size of the model

function bar(radius) {
  return [
    Array.from({ length: BAR }, (_, i) => {
      const angle = (2 * Math.PI * i) / BAR;
      return [radius * Math.cos(angle), radius * Math.sin(angle)];
    }),
  ];
}

function open(polygon) {
  const [a, b] = [polygon[0], polygon[polygon.length - 1]];
  return polygon.length > 1 && a[0] === b[0] && a[1] === b[1] ? polygon.slice(0, -1) : polygon;
}

/** A cross-section: its points, the edges of its walls, the triangles that close it. */
export function crossSection(polygons) {
  const loops = polygons.map(open).filter((loop) => loop.length > 2);
  const vectors = loops.map((loop) => loop.map(([x, y]) => new Vector2(x, y)));
  const walls = [];
  let start = 0;
  for (const loop of loops) {
    loop.forEach((_, i) => walls.push([start + i, start + ((i + 1) % loop.length)]));
    start += loop.length;
  }
  return { points: loops.flat(), walls, cap: ShapeUtils.triangulateShape(vectors[0], vectors.slice(1)) };
}

/** Cross-sections of all members; `shaped` takes the outlines that are known. */
function shapesOf(model, shaped) {
  const thin = crossSection(bar(BAR_SIZE * model.size));
  const known = model.sections.map((section) =>
    shaped && section.outline?.[0]?.length > 2 ? crossSection(section.outline) : thin,
  );
  const shapes = Array.from(model.members.element, (element) => known[model.elements.section[element]] ?? thin);
  const vertices = shapes.reduce((sum, shape, i) => sum + shape.points.length * stationCount(model, i), 0);
  return vertices > LARGEST && shaped ? shapesOf(model, false) : shapes;
}

function stationCount(model, member) {
  return model.members.first[member + 1] - model.members.first[member];
}

function skin(model, shapes) {
  const owner = [],
    station = [],
    triangles = [],
    owners = [];
  const add = (element, ...corners) => {
    triangles.push(...corners);
    owners.push(element);
  };
  let base = 0;
  shapes.forEach((shape, member) => {
    const element = model.members.element[member];
    const count = stationCount(model, member),
      ring = shape.points.length;
    for (let s = 0; s < count; ++s) {
      for (let p = 0; p < ring; ++p) {
        owner.push(element);
        station.push(model.members.first[member] + s);
      }
      if (s === 0) continue;
      const before = base + (s - 1) * ring,
        here = before + ring;
      for (const [a, b] of shape.walls) {
        add(element, before + a, before + b, here + a);
        add(element, here + a, before + b, here + b);
      }
    }
    for (const [a, b, c] of shape.cap) {
      add(element, base + a, base + c, base + b);
      const end = base + (count - 1) * ring;
      add(element, end + a, end + b, end + c);
    }
    base += count * ring;
  });
  return {
    owner: Uint32Array.from(owner),
    station: Uint32Array.from(station),
    triangles: Uint32Array.from(triangles),
    owners: Uint32Array.from(owners),
  };
}

/** Values at stations of what stands at nodes: linear between the ends of the member. */
export function alongMembers(model, values, width) {
  const { members, stations, elements } = model;
  const result = new Float32Array(stations.distance.length * width);
  members.element.forEach((element, member) => {
    const a = elements.nodes[elements.first[element]],
      b = elements.nodes[elements.first[element + 1] - 1];
    const [first, end] = [members.first[member], members.first[member + 1]];
    const from = stations.distance[first],
      length = stations.distance[end - 1] - from || 1;
    for (let s = first; s < end; ++s) {
      const t = (stations.distance[s] - from) / length;
      for (let k = 0; k < width; ++k) {
        result[width * s + k] = (1 - t) * values[width * a + k] + t * values[width * b + k];
      }
    }
  });
  return result;
}

/** All members as one surface. */
export class Members extends Surface {
  constructor(model, shaped = true) {
    const shapes = shapesOf(model, shaped);
    const { owner, station, triangles, owners } = skin(model, shapes);
    super(owner.length, owner, triangles, owners);
    this.model = model;
    this.station = station;
    this.place(shapes);
  }

  place(shapes) {
    const { members, stations } = this.model;
    let at = 0;
    shapes.forEach((shape, member) => {
      const axes = members.axes.subarray(9 * member, 9 * member + 9);
      for (let s = members.first[member]; s < members.first[member + 1]; ++s) {
        for (const [y, z] of shape.points) {
          for (let k = 0; k < 3; ++k)
            this.position[at++] = stations.place[3 * s + k] + y * axes[3 + k] + z * axes[6 + k];
        }
      }
    });
  }

  /** Displacements by station, three each. */
  setMove(move) {
    if (!move) this.move.fill(0);
    else
      this.station.forEach((s, i) => {
        for (let k = 0; k < 3; ++k) this.move[3 * i + k] = move[3 * s + k];
      });
    this.changed("move");
  }

  /** Values by station, or by element. */
  setValues(on, scalar) {
    for (let i = 0; i < this.value.length; ++i) {
      const value = scalar ? scalar[on === "element" ? this.vertexElement[i] : this.station[i]] : NaN;
      this.value[i] = Number.isFinite(value) ? value : MISSING;
    }
    this.changed("value");
  }
}
