// The curve of a path: displacement across, load factor upwards, with its hinges and a slider along its states.

import { el, refill, svg } from "./dom.js";
import { show, ticks } from "./format.js";
import { modeLabel } from "./steps.js";

const WIDTH = 640,
  HEIGHT = 300,
  LEFT = 66,
  RIGHT = 622,
  TOP = 14,
  BOTTOM = 256;

function span(values) {
  let low = 0,
    high = 0;
  for (const value of values) {
    if (!Number.isFinite(value)) continue;
    low = Math.min(low, value);
    high = Math.max(high, value);
  }
  return high > low ? [low, high] : [low, low + 1];
}

function axes(x, y, xSpan, ySpan, title) {
  return [
    ticks(...xSpan, 6).map((value) => [
      svg("line", { x1: x(value), x2: x(value), y1: TOP, y2: BOTTOM, class: "grid" }),
      svg("text", { x: x(value), y: BOTTOM + 16, "text-anchor": "middle" }, show(value, 4)),
    ]),
    ticks(...ySpan, 5).map((value) => [
      svg("line", { x1: LEFT, x2: RIGHT, y1: y(value), y2: y(value), class: "grid" }),
      svg("text", { x: LEFT - 6, y: y(value) + 4, "text-anchor": "end" }, show(value, 4)),
    ]),
    svg("text", { x: 0.5 * (LEFT + RIGHT), y: HEIGHT - 6, "text-anchor": "middle" }, title),
    svg(
      "text",
      {
        x: 14,
        y: 0.5 * (TOP + BOTTOM),
        "text-anchor": "middle",
        transform: `rotate(-90 14 ${0.5 * (TOP + BOTTOM)})`,
      },
      "load factor",
    ),
  ].flat(2);
}

/** Draws the curve; returns the drawing and a routine that marks a point of it. */
export function curveOf(path, nodeText, factors, displacements) {
  const xSpan = span(displacements),
    ySpan = span(factors);
  const x = (value) => LEFT + ((RIGHT - LEFT) * (value - xSpan[0])) / (xSpan[1] - xSpan[0]);
  const y = (value) => BOTTOM - ((BOTTOM - TOP) * (value - ySpan[0])) / (ySpan[1] - ySpan[0]);
  const points = Array.from(factors, (factor, i) => `${x(displacements[i]).toFixed(2)},${y(factor).toFixed(2)}`);
  const mark = svg("circle", { r: 6, class: "mark" });
  const drawing = svg(
    "svg",
    {
      viewBox: `0 0 ${WIDTH} ${HEIGHT}`,
      class: "curve-box",
      role: "img",
      "aria-label": "load factor over displacement",
    },
    axes(x, y, xSpan, ySpan, `${path.dof} of ${nodeText}`),
    svg("polyline", { points: points.join(" "), class: "curve curve-0" }),
    (path.events ?? []).map((event) =>
      svg("circle", {
        cx: x(displacements[event.point]),
        cy: y(event.factor),
        r: 3.2,
        class: event.kind === "closed" ? "event closed" : "event",
      }),
    ),
    mark,
  );
  const moveTo = (point) => {
    mark.setAttribute("cx", x(displacements[point]));
    mark.setAttribute("cy", y(factors[point]));
  };
  return { drawing, moveTo };
}

/** The panel of a path: curve, slider, events of the state. `choose` gets the number of a state; -1 is the end. */
export async function showPath(box, report, step, nodeText, choose) {
  const { path } = step;
  const [factors, displacements] = await Promise.all([report.array(path.factor), report.array(path.displacement)]);
  const { drawing, moveTo } = curveOf(path, nodeText, factors, displacements);
  const states = path.states ?? [];
  const text = el("output", { class: "small" });
  const slider = el("input", {
    type: "range",
    min: 0,
    max: Math.max(0, states.length - 1),
    step: 1,
    "aria-label": "state of the path",
    oninput: (event) => choose(Number(event.target.value)),
  });
  refill(
    box,
    el("h3", {}, "Load-displacement path"),
    drawing,
    states.length > 1 ? el("div", { class: "row" }, slider, text) : text,
    path.end ? el("p", { class: "small" }, path.end) : null,
  );
  box.hidden = false;
  return (index) => {
    const point = index >= 0 && states[index] ? states[index].point : factors.length - 1;
    slider.value = String(index >= 0 ? index : states.length - 1);
    moveTo(point);
    text.textContent = `load factor ${show(factors[point])}, ${path.dof} ${show(displacements[point])}`;
  };
}

/** Options of the list of modes. */
export function modeOptions(step) {
  return (step.modes ?? []).map((_, i) => [i, modeLabel(step, i, show)]);
}
