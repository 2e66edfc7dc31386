// The legend: title, colours, numbers; or the colours of groups.

import { el, refill, svg } from "./dom.js";
import { colourOf, css } from "./colours.js";
import { show, ticks } from "./format.js";

const HEIGHT = 220,
  WIDTH = 16,
  STRIPES = 64;

function bar(map, low, high, bands) {
  const stripes = bands > 0 ? bands : STRIPES;
  const step = HEIGHT / stripes;
  const drawing = svg("svg", {
    viewBox: `0 -8 118 ${HEIGHT + 16}`,
    width: 118,
    height: HEIGHT + 16,
    role: "img",
    "aria-label": `colours from ${show(low)} to ${show(high)}`,
  });
  for (let i = 0; i < stripes; ++i) {
    const t = bands > 0 ? (i + 0.5) / bands : i / (stripes - 1);
    drawing.append(
      svg("rect", {
        x: 0,
        y: HEIGHT - (i + 1) * step,
        width: WIDTH,
        height: step + 0.5,
        fill: css(colourOf(map, t)),
      }),
    );
  }
  const marks =
    bands > 0 ? Array.from({ length: bands + 1 }, (_, i) => low + ((high - low) * i) / bands) : ticks(low, high, 7);
  for (const value of marks) {
    const y = high > low ? HEIGHT * (1 - (value - low) / (high - low)) : HEIGHT / 2;
    drawing.append(
      svg("line", { x1: WIDTH, x2: WIDTH + 5, y1: y, y2: y, class: "tick-line" }),
      svg("text", { x: WIDTH + 9, y: y + 4 }, show(Math.abs(value) < 1e-9 * (high - low) ? 0 : value, 4)),
    );
  }
  return drawing;
}

/** Writes the legend of values: `range` has low, high and the names of their places. */
export function showLegend(box, { title, component, map, low, high, bands, range, note }) {
  refill(
    box,
    el("div", { class: "legend-title" }, title),
    el("div", { class: "legend-unit" }, [component, note ?? "units of the deck"].filter(Boolean).join(" · ")),
    high >= low ? bar(map, low, high, bands) : el("p", {}, "no values here"),
    range
      ? el(
          "dl",
          { class: "extremes" },
          el("dt", {}, "max"),
          el("dd", {}, `${show(range.high)} at ${range.highName}`),
          el("dt", {}, "min"),
          el("dd", {}, `${show(range.low)} at ${range.lowName}`),
        )
      : null,
  );
  box.hidden = false;
}

/** Writes the legend of groups: [name, colour] each. */
export function showGroups(box, title, groups) {
  const most = 14;
  refill(
    box,
    el("div", { class: "legend-title" }, title),
    el(
      "ul",
      { class: "groups" },
      groups
        .slice(0, most)
        .map(([name, colour]) =>
          el(
            "li",
            {},
            svg("svg", { width: 12, height: 12 }, svg("rect", { width: 12, height: 12, fill: css(colour) })),
            el("span", {}, name),
          ),
        ),
    ),
    groups.length > most ? el("p", {}, `and ${groups.length - most} more`) : null,
  );
  box.hidden = groups.length === 0;
}
