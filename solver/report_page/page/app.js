// The state of the page, and how changes of it reach the picture.

import { Vector3 } from "three";
import { chooseMap, shared } from "./materials.js";
import { Faces } from "./surfaces.js";
import { Members, alongMembers } from "./members.js";
import { Lines, NodeLines, elementOutline, memberLines, meshEdges } from "./lines.js";
import { lineMaterial } from "./materials.js";
import { Labels, showAxes } from "./labels.js";
import { Picker } from "./picking.js";
import { firstChoice, stateOf } from "./steps.js";
import { componentsOf, keyOf, mainComponent, scalarOf } from "./fields.js";
import { automaticScale, deflectedBox } from "./deflection.js";
import { showRange } from "./ranges.js";
import { refreshOverlays } from "./overlays.js";
import { applyColours } from "./groups.js";
import { shownItems } from "./items.js";
import { byId } from "./dom.js";
import { View } from "./scene.js";

/** What can be switched on and off, as it begins. */
export const SWITCHES = {
  edges: true,
  mesh: false,
  rest: false,
  supports: true,
  loads: true,
  reactions: false,
  axes: false,
  crosses: false,
  shapes: true,
  shading: true,
  bands: false,
  marks: true,
};

/** Makes everything that does not change with the step. */
export function makeApp(report, model) {
  const view = new View(byId("canvas"), model);
  const app = {
    report,
    model,
    view,
    steps: report.json.steps ?? [],
    step: null,
    choice: null,
    state: { fields: [] },
    field: null,
    component: null,
    scale: 1,
    automatic: 1,
    stretch: 1,
    quantity: null,
    colourBy: "field",
    map: "viridis",
    limits: { low: null, high: null },
    // Arrows would cover the colours of faces.
    switches: { ...SWITCHES, loads: model.faces.element.length === 0 },
    hidden: new Set(),
    shown: null,
    selected: null,
    listeners: [],
  };
  chooseMap(app.map);
  app.picker = new Picker(view, model);
  app.labels = new Labels(view, byId("labels"), shared.scale);
  showAxes(view);
  app.faces = new Faces(model);
  app.members = new Members(model, true);
  app.ink = new Vector3();
  app.edges = new NodeLines(model, model.edges, { colour: app.ink, opacity: model.outline ? 1 : 0.55 });
  app.rest = new NodeLines(model, model.edges, {
    colour: new Vector3(0.5, 0.5, 0.5),
    opacity: 0.45,
    scale: { value: 0 },
  });
  app.restMembers = new Lines(
    lineMaterial({ colour: new Vector3(0.5, 0.5, 0.5), opacity: 0.7, scale: { value: 0 } }),
  );
  app.restMembers.set(memberLines(model));
  app.chosen = new Lines(lineMaterial({ colour: new Vector3(0.95, 0.1, 0.65), onTop: true }));
  view.root.add(
    app.faces.mesh,
    app.members.mesh,
    app.edges.mesh,
    app.rest.mesh,
    app.restMembers.mesh,
    app.chosen.mesh,
  );
  app.overlays = new Map();
  return app;
}

/** Tells whoever shows the state that it has changed. */
export function tell(app) {
  for (const listener of app.listeners) listener();
}

/** Shows another step. */
export async function setStep(app, index) {
  app.step = app.steps[index];
  app.limits = { low: null, high: null };
  if (app.step) await setChoice(app, firstChoice(app.step), true);
}

/** Shows the end of the step, a mode or a state of its path. */
export async function setChoice(app, choice, rescale = false) {
  const turn = (app.turn = (app.turn ?? 0) + 1);
  const state = await stateOf(app.report, app.step, choice);
  if (turn !== app.turn) return;
  Object.assign(app, { choice, state });
  rescale ||= choice.kind === "mode";
  applyShape(app, rescale);
  const wanted = app.field && keyOf(app.field);
  const field = state.fields.find((f) => keyOf(f) === wanted) ?? firstField(state.fields);
  await setField(
    app,
    field,
    field && componentsOf(field).includes(app.component) && keyOf(field) === wanted ? app.component : null,
  );
}

function firstField(fields) {
  const known = fields.filter((f) => f.of !== "min");
  const telling = ["displacement", "section_force", "moment", "stress_top", "stress_solid"];
  const found = telling.map((name) => known.find((f) => f.name === name)).find(Boolean);
  return found ?? known[0] ?? fields[0] ?? null;
}

function applyShape(app, rescale) {
  const { model, state } = app;
  app.stationMove = state.stationMove ?? (state.displacement ? alongMembers(model, state.displacement, 3) : null);
  app.faces.setMove(state.displacement);
  app.members.setMove(app.stationMove);
  app.edges.setMove(state.displacement);
  app.meshLines?.setMove(state.displacement);
  if (rescale) {
    app.automatic = automaticScale(model, state, app.stationMove);
    setScale(app, app.automatic);
    app.view.deflected = deflectedBox(model, state, app.automatic);
    if (app.view.leaves(app.view.deflected)) app.view.fit();
  }
}

/** Multiplies the displacements. */
export function setScale(app, scale) {
  app.scale = scale;
  shared.scale.value = scale;
  app.view.draw();
}

/** Shows a field by one of its components. */
export async function setField(app, field, component = null) {
  const turn = (app.fieldTurn = (app.fieldTurn ?? 0) + 1);
  const name = component ?? (field && mainComponent(field));
  const scalar = field ? await scalarOf(app.report, field, name) : null;
  const along = await memberScalar({ ...app, field, scalar, component: name });
  if (turn !== app.fieldTurn) return;
  Object.assign(app, { field, component: name, scalar, memberScalar: along });
  app.faces.setValues(field?.on, field?.on === "station" ? null : scalar);
  app.members.setValues(field?.on, app.memberScalar);
  applyColours(app);
  showRange(app);
  await refreshOverlays(app);
  tell(app);
}

// Values along the members of a field: displacements as the stations have them, what stands at nodes straight between.
async function memberScalar({ report, field, scalar, model, state, component }) {
  if (!field || field.on === "station" || field.on === "element") return scalar;
  if (field.on !== "node") return null;
  if (field.name !== "displacement" || !state.stationMove) return alongMembers(model, scalar, 1);
  return scalarOf(report, { ...field, values: state.stationMove }, component);
}

/** Switches something on or off. */
export async function setSwitch(app, name, on) {
  app.switches[name] = on;
  if (name === "shapes") remakeMembers(app);
  if (name === "mesh" && on && !app.meshLines) {
    app.meshLines = new NodeLines(app.model, meshEdges(app.model), { colour: app.ink, opacity: 0.3 });
    app.meshLines.setMove(app.state.displacement);
    app.meshLines.setShown(shownItems(app.model, "node", app.shown));
    app.view.root.add(app.meshLines.mesh);
  }
  shared.shading.value = app.switches.shading ? 1 : 0;
  shared.bands.value = app.switches.bands ? 10 : 0;
  showRange(app);
  await refreshOverlays(app);
  tell(app);
}

function remakeMembers(app) {
  app.view.root.remove(app.members.mesh);
  app.members.geometry.dispose();
  app.members = new Members(app.model, app.switches.shapes);
  app.view.root.add(app.members.mesh);
  app.members.setMove(app.stationMove);
  app.members.setValues(app.field?.on, app.memberScalar);
  app.members.setShown(app.shown);
  applyColours(app);
}

/** Draws the outline of the element that was chosen, or none. */
export function showChosen(app) {
  const element = app.selected?.element ?? -1;
  const { places, moves } =
    element >= 0 && app.selected.node === undefined
      ? elementOutline(app.model, element, app.state.displacement, app.stationMove)
      : { places: [], moves: [] };
  app.chosen.set(places, moves);
  app.view.draw();
}
