// The tables of the run: what was said, what was computed, sums, extremes, modes.

import { el, refill, table } from "./dom.js";
import { show } from "./format.js";
import { nodeName } from "./model.js";
import { cleared, labelOf, rangeOf, sizesOf } from "./fields.js";
import { itemName } from "./items.js";
import { modeLabel, stepLabel } from "./steps.js";

const DOFS = ["ux", "uy", "uz", "rx", "ry", "rz"];
const FORCES = ["Fx", "Fy", "Fz", "Mx", "My", "Mz"];
const MOST_ROWS = 1000;
const SIX = [1, 2, 3, 4, 5, 6];

function list(title, texts, className) {
  if (!texts?.length) return null;
  return el(
    "div",
    { class: className },
    el("h3", {}, title),
    el(
      "ul",
      {},
      texts.map((text) => el("li", {}, text)),
    ),
  );
}

/** Notes and warnings of the deck, and what the page leaves out. */
export function showNotes(box, json) {
  const warnings = [...(json.warnings ?? [])];
  for (const step of json.steps ?? [])
    warnings.push(...(step.warnings ?? []).map((text) => `Step ${step.number}: ${text}`));
  refill(
    box,
    list("Warnings", warnings, "notes warning"),
    json.outline
      ? list("A large model", ["This model is too large for a page: its edges are shown, without fields."], "notes")
      : null,
    list("Left out", json.left_out, "notes"),
  );
}

/** Heading of the deck, version of the program, time. */
export function showHeading(json) {
  document.title = `${json.title || json.deck} – finites`;
  const [title, facts] = ["title", "facts"].map((id) => document.getElementById(id));
  const file = (json.deck ?? "").split(/[/\\]/).pop();
  title.textContent = json.title || file;
  title.classList.toggle("long", title.textContent.length > 90);
  const seconds = (json.time ?? []).reduce((sum, [, value]) => sum + value, 0);
  facts.textContent = [file, json.program, json.written, seconds ? `${show(seconds, 3)} s` : null]
    .filter(Boolean)
    .join(" · ");
}

function sectionTables(model) {
  const kinds = model.sections.map((section) => [
    section.name,
    section.kind,
    model.materials[section.material]?.name ?? "",
    String(section.elements ?? ""),
    (section.rows ?? []).map(([name, value]) => `${name} ${text(value)}`).join(", "),
  ]);
  const materials = model.materials.map((material) => [
    material.name,
    (material.rows ?? []).map(([name, value]) => `${name} ${text(value)}`).join(", "),
  ]);
  return [
    materials.length ? table(["material", "constants"], materials, { caption: "Materials" }) : null,
    kinds.length
      ? table(["section", "kind", "material", "elements", "data"], kinds, { caption: "Sections", numeric: [3] })
      : null,
  ];
}

const text = (value) => (typeof value === "number" ? show(value) : String(value ?? "–"));

/** Materials and sections, and the time of the run. */
export function showModelTables(box, json, model) {
  const counts = new Map();
  model.elements.type.forEach((type) => counts.set(type, (counts.get(type) ?? 0) + 1));
  const rows = [
    ["nodes", String(model.nodeCount)],
    ["elements", [...counts].map(([type, n]) => `${n} ${model.types[type]}`).join(", ")],
  ];
  refill(
    box,
    el("h2", {}, "Model"),
    table(["", ""], rows, { caption: "Size" }),
    sectionTables(model),
    json.time?.length
      ? table(
          ["phase", "seconds"],
          json.time.map(([name, value]) => [name, show(value, 3)]),
          { caption: "Time", numeric: [1] },
        )
      : null,
  );
}

// Forces and moments as text; what is nothing but rounding beside the largest of its kind is 0.
function forces(values, largest) {
  return Array.from(values, (x, k) => show(Math.abs(x) < 1e-9 * largest[k < 3 ? 0 : 1] ? 0 : x));
}

function largestOf(rows) {
  const most = (from) =>
    Math.max(0, ...rows.flatMap((row) => Array.from(row.slice(from, from + 3), Math.abs)).filter(Number.isFinite));
  return [most(0), most(3)];
}

function sumsTable(step) {
  const { applied, reaction } = step.sums ?? {};
  if (!applied || !reaction) return null;
  const largest = largestOf([applied, reaction]);
  const rows = [
    ["loads", ...forces(applied, largest)],
    ["reactions", ...forces(reaction, largest)],
    [
      "together",
      ...forces(
        applied.map((x, i) => x + reaction[i]),
        largest,
      ),
    ],
  ];
  return table(["", ...FORCES], rows, { caption: "Loads against reactions; moments about the origin", numeric: SIX });
}

function setsTable(step) {
  if (!step.reaction_sets?.length) return null;
  const largest = largestOf(step.reaction_sets.map(({ sum }) => sum));
  return table(
    ["set", "nodes", ...FORCES],
    step.reaction_sets.map(({ set, nodes, sum }) => [set, String(nodes), ...forces(sum, largest)]),
    { caption: "Reactions per support set; moments about the origin", numeric: [1, 2, 3, 4, 5, 6, 7] },
  );
}

async function reactionsTable(report, model, step) {
  const [nodes, values] = await Promise.all([
    report.array(step.reactions?.node),
    report.array(step.reactions?.value),
  ]);
  if (!nodes.length) return null;
  const sixes = Array.from(nodes, (_, i) => values.subarray(6 * i, 6 * i + 6));
  const largest = sixes.reduce((most, six) => largestOf([six]).map((x, k) => Math.max(x, most[k])), [0, 0]);
  const rows = [];
  sixes.forEach((six, i) => {
    const row = forces(six, largest);
    if (row.some((text) => text !== "0")) rows.push([nodeName(model, nodes[i]), ...row]);
  });
  return [
    table(["node", ...FORCES], rows.slice(0, MOST_ROWS), { caption: "Reactions at nodes", numeric: SIX }),
    rows.length > MOST_ROWS
      ? el("p", { class: "small" }, `and ${rows.length - MOST_ROWS} more, which the files of the run have`)
      : null,
  ];
}

// Quantities that are measured alike, by their names.
const ALIKE = [
  /^(u[xyz]|displacement)$/,
  /^r[xyz]$/,
  /^reaction_u/,
  /^reaction_r/,
  /^(N|V[yz])$/,
  /^(T|M[yz])$/,
  /^[NQ]\d/,
  /^M\d/,
  /_(top|middle|bottom)$/,
  /^solid_/,
];
const kindOf = (name) => ALIKE.findIndex((pattern) => pattern.test(name));

// Of a frame the least and largest ux of nodes are not those of the structure, whose members bend between them.
const quantityOf = (name, model) =>
  /^[ur][xyz]$/.test(name) && model.members.element.length ? `${name} of nodes` : name;

function extremesTable(model, step) {
  if (!step.extremes?.length) return null;
  const largest = new Map();
  for (const { name, min, max } of step.extremes) {
    const kind = kindOf(name);
    largest.set(kind, Math.max(largest.get(kind) ?? 0, Math.abs(min), Math.abs(max)));
  }
  const text = (value, name) => show(cleared(value, largest.get(kindOf(name))));
  return table(
    ["quantity", "least", "at", "largest", "at"],
    step.extremes.map((row) => [
      quantityOf(row.name, model),
      text(row.min, row.name),
      row.min_at,
      text(row.max, row.name),
      row.max_at,
    ]),
    { caption: "Largest values and where", numeric: [1, 3] },
  );
}

const percent = (part, whole) => `${show(100 * cleared(part / whole, 1), 3)} %`;

function modesTable(step) {
  if (!step.modes?.length) return null;
  const total = step.masses?.free ?? step.masses?.total;
  const share = (mode, k) => (mode.effective && total?.[k] > 0 ? percent(mode.effective[k], total[k]) : "–");
  const effective = step.modes.some((mode) => mode.effective);
  const word = step.kind === "buckle" ? "load factor" : "frequency";
  const rows = step.modes.map((mode, i) => [
    String(i + 1),
    show(mode.value, 6),
    ...(effective ? DOFS.map((_, k) => share(mode, k)) : []),
  ]);
  return table(["mode", word, ...(effective ? DOFS.map((dof) => `mass ${dof}`) : [])], rows, {
    caption: effective ? "Modes, and their effective modal masses as parts of the mass that can move" : "Modes",
    numeric: [0, 1, 2, 3, 4, 5, 6, 7],
  });
}

// The last row says whether the modes suffice: what all of them together take of the mass that can move.
function massesTable(step) {
  if (!step.masses) return null;
  const sum = (k) => step.modes.reduce((all, mode) => all + (mode.effective?.[k] ?? 0), 0);
  const rows = [
    ["total", ...step.masses.total.map((x) => show(x))],
    ["can move", ...step.masses.free.map((x) => show(x))],
    ["in these modes", ...step.masses.free.map((x, k) => (x > 0 ? percent(sum(k), x) : "–"))],
  ];
  const centre = step.masses.centre ? ` · centre at (${step.masses.centre.map((x) => show(x)).join(", ")})` : "";
  return table(["mass", ...DOFS], rows, { caption: `Masses${centre}`, numeric: SIX });
}

function eventsTable(model, step) {
  const events = step.path?.events;
  if (!events?.length) return null;
  const rows = events.map(({ factor, element, end, kind }) => [
    show(factor),
    String(model.elements.id[element]),
    String(end),
    kind,
  ]);
  return table(["load factor", "element", "end", "hinge"], rows, { caption: "Hinges", numeric: [0, 1, 2] });
}

// Section forces are missing: the extremes above have their cases and are exact between the stations.
async function governingTable(report, model, step) {
  const rows = [];
  const exact = new Set((step.extremes ?? []).map(({ name }) => name));
  for (const field of step.fields ?? []) {
    if (!field.governs) continue;
    const [values, cases] = await Promise.all([report.array(field.array), report.array(field.governs)]);
    const sizes = await sizesOf(report, field);
    const width = field.components.length,
      wide = field.governs.c ?? 1;
    const along = field.on === "station";
    field.components.forEach((component, k) => {
      if (field.name === "section_force" && exact.has(component)) return;
      const size = sizes(component);
      const range = rangeOf(
        Float32Array.from({ length: values.length / width }, (_, i) => cleared(values[i * width + k], size)),
      );
      // A bound of 0 belongs to no case in particular.
      if (!range || (field.of === "min" ? range.low : range.high) === 0) return;
      const item = field.of === "min" ? range.lowAt : range.highAt;
      const governs = cases[item * wide + Math.min(k, wide - 1)];
      rows.push([
        along ? `${labelOf(field)}, at stations` : labelOf(field),
        component,
        show(field.of === "min" ? range.low : range.high),
        itemName(model, field.on, item),
        step.combined?.[governs]?.name || String(step.combined?.[governs]?.step ?? "–"),
      ]);
    });
  }
  return rows.length
    ? table(["field", "component", "value", "at", "governs"], rows, { caption: "Governing cases", numeric: [2] })
    : null;
}

function combinedTable(step) {
  if (!step.combined?.length) return null;
  if (step.kind === "envelope")
    return table(
      ["step", "name"],
      step.combined.map(({ step: number, name }) => [String(number), name]),
      { caption: "Envelope of", numeric: [0] },
    );
  return table(
    ["step", "name", "factor"],
    step.combined.map(({ step: number, name, factor }) => [String(number), name, show(factor)]),
    { caption: "Combination of", numeric: [0, 2] },
  );
}

/** All tables of a step, as one part of the page that can be folded. */
export async function stepTables(report, model, step, open) {
  const part = el(
    "details",
    { class: "step", id: `step-${step.number}` },
    el("summary", {}, `Step ${stepLabel(step)}`),
  );
  part.open = open;
  part.append(
    ...[
      step.title ? el("p", {}, step.title) : null,
      list("Warnings", step.warnings, "notes warning"),
      list("Remarks", step.remarks, "notes"),
      step.summary?.length
        ? table(
            ["", ""],
            step.summary.map(([name, value]) => [name, text(value)]),
            { caption: "Summary" },
          )
        : null,
      combinedTable(step),
      extremesTable(model, step),
      sumsTable(step),
      setsTable(step),
      modesTable(step),
      massesTable(step),
      eventsTable(model, step),
      await governingTable(report, model, step),
      await reactionsTable(report, model, step),
    ]
      .flat()
      .filter(Boolean),
  );
  if (step.modes?.length)
    part.querySelector("summary").textContent += ` · ${modeLabel(step, 0, show).replace("1: ", "first ")}`;
  return part;
}
