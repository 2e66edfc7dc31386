// Groups of elements: sections, materials, sets and types, and their colours.

import { groupColour } from "./colours.js";
import { shared } from "./materials.js";

/** What elements can be coloured by. */
export const GROUPINGS = [
  ["field", "values"],
  ["section", "sections"],
  ["material", "materials"],
  ["set", "sets of elements"],
  ["type", "types of elements"],
  ["plain", "one colour"],
];

/** Decodes the sets of elements, whose members are asked for again and again. */
export async function readSets(app) {
  const sets = app.model.sets.elements ?? [];
  app.elementSets = await Promise.all(
    sets.map(async (set) => new Set(await app.report.array(set.members, Int32Array))),
  );
}

// The smallest set that holds an element says most about it.
function setNumbers({ model, elementSets }) {
  const numbers = new Int32Array(model.elementCount).fill(-1);
  const order = elementSets.map((_, i) => i).sort((a, b) => elementSets[b].size - elementSets[a].size);
  for (const i of order) for (const element of elementSets[i]) numbers[element] = i;
  return numbers;
}

/** The groups of the present colouring: title, [name, colour] of each, and the number of the group of an element. */
export function groupsOf(app) {
  const { model } = app;
  const { section, type } = model.elements;
  const material = (element) => model.sections[section[element]]?.material ?? -1;
  const byKind = {
    section: ["Sections", model.sections.map((s) => s.name), (element) => section[element]],
    material: ["Materials", model.materials.map((m) => m.name), material],
    set: ["Sets", (model.sets.elements ?? []).map((s) => s.name), null],
    type: ["Types", model.types, (element) => type[element]],
  }[app.colourBy];
  if (!byKind) return { title: "", list: [], numberOf: () => -1 };
  const [title, names, numberOf] = byKind;
  const numbers = numberOf ? null : setNumbers(app);
  return {
    title,
    list: names.map((name, i) => [name, groupColour(i)]),
    numberOf: numberOf ?? ((element) => numbers[element]),
  };
}

/** Brings the colours to the faces and members. */
export function applyColours(app) {
  shared.mode.value = app.colourBy === "field" ? (app.field ? 0 : 2) : app.colourBy === "plain" ? 2 : 1;
  if (shared.mode.value !== 1) return;
  const { numberOf } = groupsOf(app);
  const colourOf = (element) => groupColour(numberOf(element));
  app.faces.setTints(colourOf);
  app.members.setTints(colourOf);
}
