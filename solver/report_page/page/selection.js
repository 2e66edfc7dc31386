// What a click shows: all values of a node with all its parts, or of an element.

import { byId, el, refill, table } from "./dom.js";
import { cleared, componentsOf, labelOf, sizesOf, valueAt } from "./fields.js";
import { exact } from "./format.js";
import { elementName, nodeName, nodesOf, placeOf, sectionName } from "./model.js";
import { partName } from "./items.js";
import { stepLabel } from "./steps.js";

async function valuesOf(report, field, item) {
  const values = await report.array(field.array);
  const [shear, sizes] = await Promise.all([report.array(field.shear), sizesOf(report, field)]);
  const width = field.components.length;
  if (!Number.isFinite(values[item * width])) return null;
  const valueOf = (name) => cleared(valueAt(field, name, values, shear, item), sizes(name));
  return Object.fromEntries(componentsOf(field).map((name) => [name, valueOf(name)]));
}

async function governing(report, step, field, item) {
  if (!field.governs) return null;
  const cases = await report.array(field.governs);
  const width = field.governs.c ?? 1;
  return Array.from(cases.subarray(item * width, item * width + width), (i) => step.combined?.[i]?.name ?? "");
}

async function fieldRows(app, on, item) {
  const rows = [];
  for (const field of app.state.fields.filter((f) => f.on === on)) {
    const values = await valuesOf(app.report, field, item);
    if (!values) continue;
    rows.push({ field, label: labelOf(field), values, governs: await governing(app.report, app.step, field, item) });
  }
  return rows;
}

function partsAt(model, node) {
  const result = [];
  for (const [on, parts] of [
    ["plate_part", model.plateParts],
    ["solid_part", model.solidParts],
  ]) {
    parts.node.forEach((at, item) => {
      if (at === node) result.push({ on, item });
    });
  }
  return result;
}

/** Everything that is known of a node in the state that is shown. */
export async function nodeValues(app, node) {
  const parts = [];
  for (const { on, item } of partsAt(app.model, node)) {
    const rows = await fieldRows(app, on, item);
    if (rows.length) parts.push({ section: partName(app.model, on, item), rows });
  }
  return {
    title: nodeName(app.model, node),
    place: placeOf(app.model, node),
    rows: await fieldRows(app, "node", node),
    parts,
  };
}

async function memberRows(app, element) {
  const member = app.model.memberOf.get(element);
  if (member === undefined) return [];
  const [first, end] = [app.model.members.first[member], app.model.members.first[member + 1]];
  const rows = [];
  for (const [station, name] of [
    [first, "end 1"],
    [end - 1, "end 2"],
  ]) {
    for (const row of await fieldRows(app, "station", station)) rows.push({ ...row, label: `${row.label}, ${name}` });
  }
  return rows;
}

/** Everything that is known of an element. */
export async function elementValues(app, element) {
  const { model } = app;
  const nodes = Array.from(nodesOf(model, element), (node) => model.nodes.id[node]).filter((id) => id >= 0);
  const sets = (model.sets.elements ?? []).filter((_, i) => app.elementSets[i]?.has(element)).map((set) => set.name);
  return {
    title: elementName(model, element),
    type: model.types[model.elements.type[element]] ?? "",
    section: sectionName(model, element),
    nodes,
    sets,
    rows: [...(await fieldRows(app, "element", element)), ...(await memberRows(app, element))],
    parts: [],
  };
}

function rowsTable(rows, caption) {
  const body = rows.flatMap(({ label, values, governs, field }) =>
    Object.entries(values).map(([name, value], i) => [
      i === 0 ? label : "",
      name,
      exact(value),
      ...(governs ? [governs[Math.min(field.components.indexOf(name), governs.length - 1)] ?? ""] : []),
    ]),
  );
  const governed = rows.some((row) => row.governs);
  return table(["field", "component", "value", ...(governed ? ["governs"] : [])], body, { caption, numeric: [2] });
}

// Quotes: a comma within a name is not the separator of names.
const setName = (name) => (name.includes(",") ? `"${name}"` : name);

/** Shows values in their panel. */
export function showSelection(app, info) {
  const box = byId("selection");
  const facts = [];
  if (info.place) facts.push(`at (${info.place.map((x) => exact(x)).join(", ")})`);
  if (info.type) facts.push(`type ${info.type}`, `section ${info.section}`, `nodes ${info.nodes.join(", ")}`);
  if (info.sets?.length) facts.push(`sets ${info.sets.map(setName).join(", ")}`);
  refill(
    box,
    el("h3", {}, info.title[0].toUpperCase() + info.title.slice(1)),
    el("p", { class: "small" }, `${facts.join(" · ")} · step ${stepLabel(app.step)}`),
    info.rows.length ? rowsTable(info.rows) : null,
    info.parts.map((part, i) => rowsTable(part.rows, `Part ${i + 1} of ${info.parts.length}: ${part.section}`)),
    info.rows.length + info.parts.length ? null : el("p", {}, "No values here in this state."),
  );
  box.hidden = false;
}
