// Diagrams along members: N, Vy, Vz, T, My, Mz and the deflections u, v, w in local axes. Moments stand on the side of
// the tension: with section forces that the part beyond exerts, a positive My pulls on the side of +z, a positive Mz
// on the side of -y.

import { el, refill, svg } from "./dom.js";
import { show } from "./format.js";
import { elementName, sectionName } from "./model.js";
import { seriesOf } from "./steps.js";

/** What can be drawn along members: name, text, and the local axis that points up in the diagram with its sign. */
export const QUANTITIES = [
  { name: "N", text: "axial force", axis: 2, sign: 1 },
  { name: "Vy", text: "shear force along y", axis: 1, sign: 1 },
  { name: "Vz", text: "shear force along z", axis: 2, sign: 1 },
  { name: "T", text: "torsional moment", axis: 2, sign: 1 },
  { name: "My", text: "moment about y", axis: 2, sign: 1, side: "z" },
  { name: "Mz", text: "moment about z", axis: 1, sign: -1, side: "y" },
  { name: "u", text: "displacement along the member", axis: 2, sign: 1 },
  { name: "v", text: "deflection along y", axis: 1, sign: 1 },
  { name: "w", text: "deflection along z", axis: 2, sign: 1 },
];

function ends(model, member) {
  const { elements, members } = model;
  const element = members.element[member];
  return [elements.nodes[elements.first[element]], elements.nodes[elements.first[element + 1] - 1]];
}

function sameLine(model, a, b) {
  const { members, elements } = model;
  let least = 1;
  for (const row of [0, 6]) {
    const dot = [0, 1, 2].reduce((sum, k) => sum + members.axes[9 * a + row + k] * members.axes[9 * b + row + k], 0);
    least = Math.min(least, dot);
  }
  return least > 0.9999 && elements.section[members.element[a]] === elements.section[members.element[b]];
}

/** The members that go on straight from one, with the same section, in order: a column cut into elements is one. */
export function chainOf(model, member) {
  model.membersAt ??= model.members.element.reduce((map, _, m) => {
    for (const node of ends(model, m)) map.set(node, [...(map.get(node) ?? []), m]);
    return map;
  }, new Map());
  const chain = [member];
  for (const forward of [true, false]) {
    for (;;) {
      const here = forward ? chain[chain.length - 1] : chain[0];
      const node = ends(model, here)[forward ? 1 : 0];
      const next = model.membersAt
        .get(node)
        .find((m) => !chain.includes(m) && ends(model, m)[forward ? 0 : 1] === node && sameLine(model, here, m));
      if (next === undefined) break;
      if (forward) chain.push(next);
      else chain.unshift(next);
    }
  }
  return chain;
}

// Between stations a moment is a cubic of its values and slopes, which are the shear forces; its extreme lies where
// they pass through zero. This is exact for uniform loads. With axial forces on a bent axis the slopes are others,
// which the chord shows; then the stations stand alone.
function innerExtreme(x0, x1, m0, m1, s0, s1) {
  const h = x1 - x0;
  if (!(h > 0) || !(s0 * s1 < 0)) return null;
  const chord = (m1 - m0) / h;
  if (Math.abs(chord - 0.5 * (s0 + s1)) > 1e-2 * (Math.abs(s0) + Math.abs(s1))) return null;
  const t = s0 / (s0 - s1);
  const value =
    (1 + 2 * t) * (1 - t) ** 2 * m0 + t * t * (3 - 2 * t) * m1 + h * (t * (1 - t) ** 2 * s0 - t * t * (1 - t) * s1);
  return { x: x0 + t * h, value };
}

/** Points (x, value) of a quantity along a chain, with the extremes between stations. */
export function profileOf(model, chain, values, slopes = null, sign = 1) {
  const { members, stations } = model;
  const points = [];
  let start = 0;
  for (const member of chain) {
    const [first, end] = [members.first[member], members.first[member + 1]];
    for (let s = first; s < end; ++s) {
      if (slopes && s > first) {
        const inner = innerExtreme(
          stations.distance[s - 1],
          stations.distance[s],
          values[s - 1],
          values[s],
          sign * slopes[s - 1],
          sign * slopes[s],
        );
        if (inner) points.push({ x: start + inner.x, value: inner.value });
      }
      points.push({ x: start + stations.distance[s], value: values[s] });
    }
    start += stations.distance[end - 1];
  }
  return points.filter((point) => Number.isFinite(point.value));
}

/** The points that are named: both ends, the largest and the least. */
export function namedPoints(points) {
  if (!points.length) return [];
  const largest = points.reduce((a, b) => (b.value > a.value ? b : a));
  const least = points.reduce((a, b) => (b.value < a.value ? b : a));
  const size = Math.max(Math.abs(largest.value), Math.abs(least.value));
  const chosen = [points[0], points[points.length - 1]];
  for (const point of [largest, least]) {
    if (!chosen.some((other) => Math.abs(other.value - point.value) <= 1e-6 * size)) chosen.push(point);
  }
  return chosen;
}

const WIDTH = 640,
  LEFT = 14,
  RIGHT = 626,
  TALL = 46;

function drawing(quantity, series, length) {
  const size = Math.max(0, ...series.flatMap(({ points }) => points.map((point) => Math.abs(point.value))));
  const flip = quantity.side === "y" ? -1 : 1;
  const x = (point) => LEFT + ((RIGHT - LEFT) * point.x) / (length || 1);
  const y = (point) => (size > 0 ? -(flip * TALL * point.value) / size : 0);
  const box = svg("svg", {
    viewBox: `0 ${-TALL - 20} ${WIDTH} ${2 * TALL + 40}`,
    class: "diagram",
    role: "img",
    "aria-label": `${quantity.text}: from ${show(series[0]?.points[0]?.value)}`,
  });
  series.forEach(({ points, label }, i) => {
    if (!points.length) return;
    const path = points.map((point) => `${x(point).toFixed(2)},${y(point).toFixed(2)}`);
    box.append(
      svg("polygon", { points: [`${LEFT},0`, ...path, `${RIGHT},0`].join(" "), class: `area area-${i}` }),
      svg("polyline", { points: path.join(" "), class: `curve curve-${i}` }),
    );
    const named = [];
    for (const point of namedPoints(points)) {
      if (size === 0 && point !== points[0]) continue;
      const place = { at: x(point), above: y(point) <= 0 };
      if (named.some((other) => Math.abs(other.at - place.at) < 60 && other.above === place.above)) continue;
      named.push(place);
      const anchor = place.at < 90 ? "start" : place.at > WIDTH - 90 ? "end" : "middle";
      box.append(
        svg("circle", { cx: place.at, cy: y(point), r: 2.5, class: `dot dot-${i}` }),
        svg(
          "text",
          { x: place.at, y: y(point) + (place.above ? -6 : 15), "text-anchor": anchor },
          show(point.value) + (label ? ` ${label}` : ""),
        ),
      );
    }
  });
  box.append(svg("line", { x1: LEFT, x2: RIGHT, y1: 0, y2: 0, class: "base" }));
  return box;
}

/** The diagrams of a member and those that go on straight from it. */
export async function showDiagrams(box, report, model, state, member) {
  const chain = chainOf(model, member);
  const length = chain.reduce((sum, m) => sum + model.stations.distance[model.members.first[m + 1] - 1], 0);
  const figures = [],
    zero = [];
  for (const quantity of QUANTITIES) {
    const series = await profiles(report, model, state, quantity, chain);
    if (!series.length) continue;
    if (series.every(({ points }) => points.every(({ value }) => value === 0))) {
      zero.push(quantity.name);
      continue;
    }
    const side = quantity.side ? `, on the side of the tension, ${quantity.side} upwards` : "";
    figures.push(
      el(
        "figure",
        {},
        el("figcaption", {}, el("b", {}, quantity.name), ` ${quantity.text}${side}`),
        drawing(quantity, series, length),
      ),
    );
  }
  const ids = chain.map((m) => model.elements.id[model.members.element[m]]);
  const names = ids.length > 6 ? `${ids.slice(0, 3).join(", ")} … ${ids[ids.length - 1]}` : ids.join(", ");
  refill(
    box,
    el("h3", {}, `Along ${ids.length > 1 ? `elements ${names}` : elementName(model, model.members.element[member])}`),
    el("p", { class: "small" }, `${sectionName(model, model.members.element[member])} · length ${show(length)}`),
    figures.length + zero.length
      ? el("div", { class: "diagrams" }, figures)
      : el("p", {}, "This state has no section forces."),
    zero.length ? el("p", { class: "small" }, `zero: ${zero.join(", ")}`) : null,
  );
  box.hidden = false;
}

/** Profiles of all series of a quantity along a chain: { label, points }. */
export async function profiles(report, model, state, quantity, chain) {
  const series = await seriesOf(report, model, state, quantity.name);
  const slope = { My: ["Vz", 1], Mz: ["Vy", -1] }[quantity.name];
  const slopes = slope && series.length === 1 ? (await seriesOf(report, model, state, slope[0]))[0]?.values : null;
  return series.map(({ label, values }) => ({ label, points: profileOf(model, chain, values, slopes, slope?.[1]) }));
}
