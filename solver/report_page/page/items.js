// The items that fields belong to: what they are called, where they are.

import { elementName, nodeName } from "./model.js";
import { show } from "./format.js";

function memberOfStation(model, station) {
  const { first } = model.members;
  let low = 0,
    high = first.length - 1;
  while (high - low > 1) {
    const middle = (low + high) >> 1;
    if (first[middle] <= station) low = middle;
    else high = middle;
  }
  return low;
}

/** "node 7", "element 3", "element 3 at x = 1.5". */
export function itemName(model, on, item) {
  if (on === "node") return nodeName(model, item);
  if (on === "element") return elementName(model, item);
  if (on === "plate_part") return nodeName(model, model.plateParts.node[item]);
  if (on === "solid_part") return nodeName(model, model.solidParts.node[item]);
  const member = memberOfStation(model, item);
  return `${elementName(model, model.members.element[member])} at x = ${show(model.stations.distance[item])}`;
}

function meanOf(source, nodes) {
  return [0, 1, 2].map((k) => nodes.reduce((sum, node) => sum + source[3 * node + k], 0) / nodes.length);
}

/** Place and displacement of an item. */
export function itemPlace(model, on, item, nodeMove, stationMove) {
  if (on === "station") {
    return {
      place: model.stations.place.subarray(3 * item, 3 * item + 3),
      move: stationMove ? stationMove.subarray(3 * item, 3 * item + 3) : [0, 0, 0],
    };
  }
  const { first, nodes } = model.elements;
  const own =
    on === "node"
      ? [item]
      : on === "plate_part"
        ? [model.plateParts.node[item]]
        : on === "solid_part"
          ? [model.solidParts.node[item]]
          : nodes.subarray(first[item], first[item + 1]);
  return { place: meanOf(model.nodes.xyz, own), move: nodeMove ? meanOf(nodeMove, own) : [0, 0, 0] };
}

/** Whether items are seen, by the elements that are; null, if all are. */
export function shownItems(model, on, shown) {
  if (!shown || on === "element") return shown;
  if (on === "station") {
    const result = new Uint8Array(model.stations.distance.length);
    model.members.element.forEach((element, m) =>
      result.fill(shown[element], model.members.first[m], model.members.first[m + 1]),
    );
    return result;
  }
  const { first, nodes, section } = model.elements;
  const byNode = new Uint8Array(model.nodeCount);
  const bySection = new Set();
  shown.forEach((seen, element) => {
    if (!seen) return;
    for (let i = first[element]; i < first[element + 1]; ++i) byNode[nodes[i]] = 1;
    bySection.add(section[element]);
  });
  if (on === "node") return byNode;
  const parts = on === "plate_part" ? model.plateParts : model.solidParts;
  return Uint8Array.from(parts.node, (node, i) =>
    byNode[node] && (parts.section[i] < 0 || bySection.has(parts.section[i])) ? 1 : 0,
  );
}

/** What a part belongs to. */
export function partName(model, on, item) {
  const parts = on === "plate_part" ? model.plateParts : model.solidParts;
  return model.sections[parts.section[item]]?.name ?? "no section";
}
