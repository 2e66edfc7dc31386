// The controls beside the picture.

import { byId, el, refill, select, tick } from "./dom.js";
import { MAPS } from "./colours.js";
import { componentsOf, keyOf, labelOf } from "./fields.js";
import { chooseMap } from "./materials.js";
import { setChoice, setField, setScale, setStep, setSwitch, tell } from "./app.js";
import { setColouring, setHidden } from "./choosing.js";
import { GROUPINGS } from "./groups.js";
import { placeOfScale, scaleAt } from "./deflection.js";
import { QUANTITIES } from "./diagrams.js";
import { modeOptions } from "./path.js";
import { refreshOverlays } from "./overlays.js";
import { showRange } from "./ranges.js";
import { stepLabel } from "./steps.js";
import { show } from "./format.js";

function group(title, ...children) {
  return el("fieldset", {}, el("legend", {}, title), ...children);
}

function row(label, ...children) {
  return el("div", { class: "control" }, el("span", {}, label), ...children);
}

function stepGroup(app) {
  const index = app.steps.indexOf(app.step);
  const steps = select(
    "Step",
    app.steps.map((step, i) => [i, stepLabel(step)]),
    index,
    (value) => setStep(app, Number(value)),
  );
  const modes = modeOptions(app.step ?? {});
  const ends = app.step?.displacement ? [["end", "displacements of the step"]] : [];
  const chosen = app.choice?.kind === "mode" ? app.choice.index : "end";
  return group(
    "Step",
    row("step", steps),
    modes.length
      ? row(
          "mode",
          select("Mode", [...ends, ...modes], chosen, (value) =>
            setChoice(
              app,
              value === "end" ? { kind: "end", index: 0 } : { kind: "mode", index: Number(value) },
              true,
            ),
          ),
        )
      : null,
  );
}

function fieldOptions(fields) {
  const groups = new Map();
  for (const field of fields)
    groups.set(field.group ?? "", [...(groups.get(field.group ?? "") ?? []), [keyOf(field), labelOf(field)]]);
  return [...groups].map(([name, options]) => ({ group: name, options }));
}

function limitBox(app, end) {
  const box = el("input", {
    type: "number",
    step: "any",
    "aria-label": `${end === "low" ? "least" : "largest"} value of the colours`,
    placeholder: show(app.range?.[end]),
    onchange: () => {
      app.limits[end] = box.value === "" ? null : Number(box.value);
      showRange(app);
    },
  });
  if (app.limits[end] !== null) box.value = app.limits[end];
  return box;
}

function choose(app, field, component = null) {
  app.limits = { low: null, high: null };
  return setField(app, field, component);
}

function fieldGroup(app) {
  const { fields } = app.state;
  if (!fields.length) return group("Field", el("p", { class: "small" }, "This step has no fields."));
  const byKey = (key) => fields.find((field) => keyOf(field) === key);
  return group(
    "Field",
    row(
      "field",
      select("Field", fieldOptions(fields), app.field && keyOf(app.field), (key) => choose(app, byKey(key))),
    ),
    row(
      "component",
      select(
        "Component",
        componentsOf(app.field).map((name) => [name, name]),
        app.component,
        (name) => choose(app, app.field, name),
      ),
    ),
    row(
      "colours",
      select(
        "Colour map",
        MAPS.map((name) => [name, name]),
        app.map,
        (name) => {
          app.map = name;
          chooseMap(name);
          showRange(app);
        },
      ),
    ),
    row("from, to", limitBox(app, "low"), limitBox(app, "high")),
  );
}

function scaleGroup(app) {
  const number = el("input", {
    type: "number",
    min: 0,
    step: "any",
    "aria-label": "scale of the displacements",
    onchange: () => set(Number(number.value) || 0),
  });
  const slider = el("input", {
    type: "range",
    min: 0,
    max: 100,
    step: 0.5,
    "aria-label": "scale of the displacements, slider",
    oninput: () => set(scaleAt(Number(slider.value), app.automatic), false),
  });
  const write = (slide = true) => {
    number.value = Number(app.scale.toPrecision(3));
    if (slide) slider.value = placeOfScale(app.scale, app.automatic);
  };
  const set = (scale, slide = true) => {
    setScale(app, scale);
    write(slide);
  };
  write();
  return group(
    "Deflected shape",
    row("scale", slider, number),
    el(
      "div",
      { class: "row" },
      el("button", { type: "button", onclick: () => set(1) }, "true scale"),
      el("button", { type: "button", onclick: () => set(app.automatic) }, "automatic"),
      tick("move", app.motion.on, (on) => app.motion.set(on), "animates the deflected shape"),
    ),
  );
}

const TICKS = [
  ["edges", "edges"],
  ["mesh", "all element edges"],
  ["rest", "shape at rest"],
  ["supports", "supports"],
  ["loads", "loads"],
  ["reactions", "reactions"],
  ["axes", "local axes"],
  ["crosses", "principal directions"],
  ["shapes", "section shapes"],
  ["shading", "shading"],
  ["bands", "bands"],
  ["marks", "min and max"],
];
const NEEDS = {
  mesh: (m) => m.faces.element.length,
  crosses: (m) => m.faces.element.length,
  shapes: (m) => m.members.element.length,
};

function showGroup(app) {
  const useful = TICKS.filter(([name]) => !NEEDS[name] || NEEDS[name](app.model) > 0);
  const crosses = app.switches.crosses && app.field?.form !== "plane_stress";
  return group(
    "Show",
    el(
      "div",
      { class: "ticks" },
      useful.map(([name, text]) => tick(text, app.switches[name], (on) => setSwitch(app, name, on))),
    ),
    crosses ? el("p", { class: "small" }, "Principal directions: choose a field of stresses of plates.") : null,
  );
}

function memberGroup(app) {
  if (!app.model.members.element.length) return null;
  const options = [["", "none"], ...QUANTITIES.map(({ name, text }) => [name, `${name}: ${text}`])];
  const box = select("Diagram on the model", options, app.quantity?.name ?? "", (name) => {
    app.quantity = QUANTITIES.find((quantity) => quantity.name === name) ?? null;
    refreshOverlays(app).then(() => tell(app));
  });
  const size = el("input", {
    type: "range",
    min: -1,
    max: 1,
    step: 0.05,
    value: Math.log10(app.stretch),
    "aria-label": "size of the diagram",
    oninput: () => {
      app.stretch = 10 ** Number(size.value);
      refreshOverlays(app);
    },
  });
  const why = app.undrawn && el("p", { class: "small" }, app.undrawn);
  return group("Members", row("diagram", box), row("size", size), why);
}

function partsGroup(app) {
  const { model } = app;
  const entry = (kind, name, i) =>
    tick(name, !app.hidden.has(`${kind} ${i}`), (on) => setHidden(app, `${kind} ${i}`, !on));
  const sections = model.sections.map((section, i) => [section.elements !== 0, entry("section", section.name, i)]);
  const sets = (model.sets.elements ?? []).map((set, i) => [set.members?.n > 0, entry("set", set.name, i)]);
  const list = (title, items) => {
    const seen = items.filter(([used]) => used).map(([, item]) => item);
    if (!seen.length) return null;
    const open = el(
      "details",
      {},
      el("summary", {}, `${title} (${seen.length})`),
      el("div", { class: "parts" }, seen),
    );
    open.open = app.openLists?.has(title) ?? false;
    open.addEventListener("toggle", () => {
      app.openLists ??= new Set();
      if (open.open) app.openLists.add(title);
      else app.openLists.delete(title);
    });
    return open;
  };
  return group(
    "Parts",
    row(
      "colour by",
      select("Colour by", GROUPINGS, app.colourBy, (kind) => setColouring(app, kind)),
    ),
    list("sections", sections),
    list("sets", sets),
  );
}

function findGroup(app) {
  const number = el("input", { type: "number", min: 1, step: 1, "aria-label": "number of a node or element" });
  const find = (kind) => el("button", { type: "button", onclick: () => app.find(kind, Number(number.value)) }, kind);
  const answer = el("div", { class: "small", role: "status" });
  app.missing = (text) => {
    answer.textContent = text;
  };
  return group("Find", el("div", { class: "row" }, number, find("node"), find("element")), answer);
}

/** Writes the controls; again, whenever the state has changed. The control that has the keyboard keeps it. */
export function showControls(app) {
  const box = byId("controls");
  const write = () => {
    const held = box.contains(document.activeElement) ? document.activeElement : null;
    const label = held?.getAttribute("aria-label") ?? held?.closest("label")?.textContent;
    refill(
      box,
      stepGroup(app),
      fieldGroup(app),
      scaleGroup(app),
      memberGroup(app),
      showGroup(app),
      partsGroup(app),
      findGroup(app),
    );
    if (!label) return;
    const same = [...box.querySelectorAll("input, select, button")].find(
      (node) => (node.getAttribute("aria-label") ?? node.closest("label")?.textContent) === label,
    );
    same?.focus();
  };
  app.listeners.push(write);
  write();
}

const DIRECTIONS = [
  ["iso", "Isometric"],
  ["front", "Front"],
  ["back", "Back"],
  ["left", "Left"],
  ["right", "Right"],
  ["top", "Top"],
  ["bottom", "Bottom"],
];

/** The buttons below the picture. */
export function showViews(app) {
  refill(
    byId("views"),
    DIRECTIONS.map(([name, text]) => el("button", { type: "button", onclick: () => app.view.look(name) }, text)),
    el("button", { type: "button", onclick: () => app.view.fit() }, "Fit"),
    select(
      "Axis that points up",
      [
        ["z", "z up"],
        ["y", "y up"],
      ],
      app.view.up,
      (axis) => app.view.setUp(axis),
    ),
  );
}
