// The model, decoded: what every step shares.

async function allOf(report, group, names) {
  const entries = Object.entries(names);
  const arrays = await Promise.all(entries.map(([name, Type]) => report.array(group?.[name], Type)));
  return Object.fromEntries(entries.map(([name], i) => [name, arrays[i]]));
}

/** The eight corners of a box. */
export const cornersOf = (low, high) =>
  Array.from({ length: 8 }, (_, corner) => low.map((x, k) => (corner & (1 << k) ? high[k] : x)));

/** The least and the largest of each coordinate. */
export function boxOf(xyz) {
  const low = [Infinity, Infinity, Infinity];
  const high = [-Infinity, -Infinity, -Infinity];
  for (let i = 0; i < xyz.length; ++i) {
    const k = i % 3;
    if (xyz[i] < low[k]) low[k] = xyz[i];
    if (xyz[i] > high[k]) high[k] = xyz[i];
  }
  if (!xyz.length) return { low: [0, 0, 0], high: [1, 1, 1] };
  return { low, high };
}

/** Decodes nodes, elements, faces, members; finds the size of the model. */
export async function readModel(report) {
  const json = report.json;
  const I = Int32Array,
    F = Float32Array;
  const [nodes, elements, faces, members, stations, plateParts, solidParts, edges] = await Promise.all([
    allOf(report, json.nodes, { id: I, xyz: F }),
    allOf(report, json.elements, { id: I, part: Uint8Array, type: I, section: I, first: I, nodes: I }),
    allOf(report, json.faces, { element: I, first: I, nodes: I, corner: I }),
    allOf(report, json.members, { element: I, first: I, axes: F, length: F }),
    allOf(report, json.stations, { distance: F, place: F }),
    allOf(report, json.plate_parts, { node: I, section: I, axes: F, corner: I }),
    allOf(report, json.solid_parts, { node: I, section: I, corner: I }),
    report.array(json.edges, I),
  ]);
  const { low, high } = boxOf(nodes.xyz);
  const model = {
    nodes,
    elements,
    faces,
    members,
    stations,
    plateParts,
    solidParts,
    edges,
    low,
    high,
    sections: json.sections ?? [],
    materials: json.materials ?? [],
    types: json.types ?? [],
    sets: json.sets ?? {},
    origin: json.origin ?? [0, 0, 0],
    outline: Boolean(json.outline),
  };
  model.centre = low.map((value, k) => 0.5 * (value + high[k]));
  model.size = Math.hypot(...high.map((value, k) => value - low[k])) || 1;
  model.nodeCount = nodes.xyz.length / 3;
  model.elementCount = elements.id.length;
  model.memberOf = new Map();
  members.element.forEach((element, member) => model.memberOf.set(element, member));
  return model;
}

/** "node 12", or what stands for a node that the deck does not have. */
export function nodeName(model, node) {
  const id = model.nodes.id[node];
  return id >= 0 ? `node ${id}` : "a point inside a quadratic element";
}

/** "element 7", of a divided quadratic element with its part. */
export function elementName(model, element) {
  const part = model.elements.part[element];
  return `element ${model.elements.id[element]}` + (part ? `, part ${part}` : "");
}

/** Indices of the nodes of an element. */
export function nodesOf(model, element) {
  const { first, nodes } = model.elements;
  return nodes.subarray(first[element], first[element + 1]);
}

/** Place of a node in the axes of the deck. */
export function placeOf(model, node) {
  return [0, 1, 2].map((k) => model.nodes.xyz[3 * node + k] + model.origin[k]);
}

/** Name of the section of an element. */
export function sectionName(model, element) {
  return model.sections[model.elements.section[element]]?.name ?? "no section";
}
