// The range of the values that are shown, with the legend and the marks of the least and the largest.

import { byId } from "./dom.js";
import { rangeOf } from "./fields.js";
import { labelOf } from "./fields.js";
import { itemName, itemPlace, shownItems } from "./items.js";
import { shared } from "./materials.js";
import { ballSymbols } from "./symbols.js";
import { groupsOf } from "./groups.js";
import { showGroups, showLegend } from "./legend.js";
import { show } from "./format.js";
import { stateLabel, stepLabel } from "./steps.js";

// Nodes and the stations of members between them both have displacements.
function sources({ field, scalar, memberScalar, state }) {
  const own = { on: field.on, values: scalar };
  return field.name === "displacement" && state.stationMove ? [own, { on: "station", values: memberScalar }] : [own];
}

/** Least and largest value of what is seen, with their items. */
export function currentRange(app) {
  if (!app.field || !app.scalar) return null;
  let result = null;
  for (const { on, values } of sources(app)) {
    const range = rangeOf(values, shownItems(app.model, on, app.shown));
    if (!range) continue;
    const low = { on, item: range.lowAt },
      high = { on, item: range.highAt };
    result ??= { low: range.low, high: range.high, lowAt: low, highAt: high };
    if (range.low < result.low) Object.assign(result, { low: range.low, lowAt: low });
    if (range.high > result.high) Object.assign(result, { high: range.high, highAt: high });
  }
  if (!result) return null;
  const name = ({ on, item }) => itemName(app.model, on, item);
  return { ...result, lowName: name(result.lowAt), highName: name(result.highAt) };
}

function marks(app, range) {
  const places = ["lowAt", "highAt"]
    .map((end) => range[end])
    .map(({ on, item }) => itemPlace(app.model, on, item, app.state.displacement, app.stationMove));
  return places.map(({ place, move }, i) => ({
    place,
    move,
    rank: 10 + i,
    className: "extreme",
    text: `${["min", "max"][i]} ${show([range.low, range.high][i], 4)}`,
  }));
}

/** Writes legend and marks, and tells the shaders the limits of the colours. */
export function showRange(app) {
  const { view, switches, limits } = app;
  const range = (app.range = currentRange(app));
  view.root.remove(...(app.markMeshes ?? []));
  app.markMeshes = [];
  const low = limits.low ?? range?.low ?? 0,
    high = limits.high ?? range?.high ?? 0;
  shared.low.value = low;
  shared.high.value = high;
  const coloured = app.colourBy === "field" && app.field;
  if (coloured) {
    showLegend(byId("legend"), {
      title: labelOf(app.field),
      component: app.component,
      map: app.map,
      low,
      high: range ? high : -Infinity,
      bands: shared.bands.value,
      range,
      note: app.component === "angle" ? "degrees" : app.state.kind === "mode" ? "scaled" : null,
    });
  } else showGroups(byId("legend"), app.colourBy === "plain" ? "" : groupsOf(app).title, groupsOf(app).list);
  const labels = coloured && range && switches.marks && range.high > range.low ? marks(app, range) : [];
  if (labels.length) {
    app.markMeshes = ballSymbols(
      app.model,
      labels.map((l) => l.place),
      labels.map((l) => l.move),
      [
        [0.15, 0.15, 0.15],
        [0.75, 0.05, 0.2],
      ],
      0.01,
    );
    view.root.add(...app.markMeshes);
  }
  app.labels.set("range", labels);
  byId("caption").textContent = app.step ? `Step ${stepLabel(app.step)}${stateLabel(app)}` : "";
  view.draw();
}
