// Plates and the skin of solids: one geometry, whose vertices are the corners of the faces, since two elements can have
// different values at a node that they share.

import { BufferAttribute, BufferGeometry, Mesh } from "three";
import { MISSING, surfaceMaterial } from "./materials.js";

/** An attribute of a geometry, all zero. */
export function attribute(geometry, name, count, width, Type = Float32Array, normalized = false) {
  geometry.setAttribute(name, new BufferAttribute(new Type(count * width), width, normalized));
  return geometry.attributes[name].array;
}

/** Copies what belongs to nodes to the vertices that stand at them. */
export function spread(target, source, nodes, width = 3) {
  for (let i = 0; i < nodes.length; ++i) {
    const at = width * nodes[i];
    for (let k = 0; k < width; ++k) target[width * i + k] = source[at + k];
  }
}

function faceTriangles(faces) {
  const count = faces.element.length;
  const triangles = new Uint32Array(3 * Math.max(0, faces.nodes.length - 2 * count));
  const owners = new Uint32Array(triangles.length / 3);
  let at = 0;
  for (let face = 0; face < count; ++face) {
    const first = faces.first[face];
    for (let corner = first + 1; corner + 1 < faces.first[face + 1]; ++corner) {
      owners[at / 3] = faces.element[face];
      triangles[at++] = first;
      triangles[at++] = corner;
      triangles[at++] = corner + 1;
    }
  }
  return { triangles: triangles.subarray(0, at), owners: owners.subarray(0, at / 3) };
}

/** What faces and members have in common: a mesh with values, displacements and elements that can be hidden. */
export class Surface {
  constructor(vertexCount, vertexElement, triangles, owners) {
    const geometry = new BufferGeometry();
    this.geometry = geometry;
    this.position = attribute(geometry, "position", vertexCount, 3);
    this.move = attribute(geometry, "move", vertexCount, 3);
    this.value = attribute(geometry, "value", vertexCount, 1);
    this.tint = attribute(geometry, "tint", vertexCount, 3, Uint8Array, true);
    attribute(geometry, "element", vertexCount, 1).set(vertexElement);
    this.vertexElement = vertexElement;
    this.triangles = triangles;
    this.owners = owners;
    geometry.setIndex(new BufferAttribute(triangles, 1));
    this.mesh = new Mesh(geometry, surfaceMaterial());
    this.mesh.frustumCulled = false;
  }

  changed(...names) {
    for (const name of names) this.geometry.attributes[name].needsUpdate = true;
  }

  /** Colours of groups by element, red, green, blue from 0 to 255. */
  setTints(colourOfElement) {
    let last = -1,
      colour = null;
    this.vertexElement.forEach((element, i) => {
      if (element !== last) [last, colour] = [element, colourOfElement(element)];
      this.tint.set(colour, 3 * i);
    });
    this.changed("tint");
  }

  /** Draws only elements that are seen. */
  setShown(shown) {
    let triangles = this.triangles;
    if (shown) {
      triangles = new Uint32Array(this.triangles.length);
      let at = 0;
      for (let t = 0; t < this.owners.length; ++t) {
        if (!shown[this.owners[t]]) continue;
        triangles.set(this.triangles.subarray(3 * t, 3 * t + 3), at);
        at += 3;
      }
      triangles = triangles.subarray(0, at);
    }
    this.geometry.setIndex(new BufferAttribute(triangles, 1));
  }
}

const PART_OF = { plate_part: "plateParts", solid_part: "solidParts" };

/** The faces of plates and solids. */
export class Faces extends Surface {
  constructor(model) {
    const { faces } = model;
    const owner = new Uint32Array(faces.nodes.length);
    for (let face = 0; face < faces.element.length; ++face) {
      owner.fill(faces.element[face], faces.first[face], faces.first[face + 1]);
    }
    const { triangles, owners } = faceTriangles(faces);
    super(faces.nodes.length, owner, triangles, owners);
    this.model = model;
    spread(this.position, model.nodes.xyz, faces.nodes);
  }

  setMove(move) {
    if (move) spread(this.move, move, this.model.faces.nodes);
    else this.move.fill(0);
    this.changed("move");
  }

  /** The item of a field at every vertex; -1 without one. */
  items(on) {
    const { faces } = this.model;
    if (on === "node") return faces.nodes;
    if (on === "element") return this.vertexElement;
    const parts = this.model[PART_OF[on]]?.corner;
    return parts?.length ? Int32Array.from(faces.corner, (corner) => (corner < 0 ? -1 : parts[corner])) : null;
  }

  setValues(on, scalar) {
    const items = scalar && this.items(on);
    for (let i = 0; i < this.value.length; ++i) {
      const value = items && items[i] >= 0 ? scalar[items[i]] : NaN;
      this.value[i] = Number.isFinite(value) ? value : MISSING;
    }
    this.changed("value");
  }
}
