// The report page: reads the data, shows the first step, then writes the tables.

import { byId, refill } from "./dom.js";
import { readReport } from "./data.js";
import { nodeName, readModel } from "./model.js";
import { makeApp, setChoice, setStep, setSwitch, showChosen } from "./app.js";
import { Motion } from "./deflection.js";
import { readSets } from "./groups.js";
import { showControls, showViews } from "./controls.js";
import { showDiagrams } from "./diagrams.js";
import { showPath } from "./path.js";
import { elementValues, nodeValues, showSelection } from "./selection.js";
import { showHeading, showModelTables, showNotes, stepTables } from "./tables.js";
import { preparePaper, savePicture } from "./paper.js";
import { startTheme } from "./theme.js";
import { testCalls } from "./test_calls.js";
import { shared } from "./materials.js";

const SMALL = 5000; // faces: the edges of all elements do not cover the colours

function say(text) {
  byId("failure").hidden = false;
  byId("failure").append(text, document.createElement("br"));
}

// How far the first step moves along x, y, z in all.
async function motions({ steps, report }) {
  const step = steps[0] ?? {};
  const move = await report.array(step.stations?.displacement ?? step.displacement ?? step.modes?.[0]?.shape);
  const sums = [0, 0, 0];
  move.forEach((x, i) => (sums[i % 3] += Math.abs(x)));
  return sums;
}

// Flat frames are seen from the front, with y upwards if they lie in the x-y plane; all else from a corner, and so are
// grillages, which move across their plane. A straight beam is seen in the plane in which it bends.
async function firstView(app) {
  const { view, model } = app;
  if (model.faces.element.length) return view.look("iso");
  const sums = await motions(app);
  const seen = [0, 1, 2].map(
    (k) => model.high[k] - model.low[k] < 1e-6 * model.size && !(sums[k] > sums[(k + 1) % 3] + sums[(k + 2) % 3]),
  );
  if (seen[2]) {
    view.setUp("y");
    view.look("front");
  } else if (seen[1]) view.look("front");
  else if (seen[0]) view.look("right");
  return undefined;
}

/** Shows what was chosen: values, the outline of an element, diagrams of a member. */
async function select(app, selected) {
  app.selected = selected;
  showChosen(app);
  if (!selected) {
    for (const id of ["selection", "diagrams"]) byId(id).hidden = true;
    return null;
  }
  const info =
    selected.node !== undefined ? await nodeValues(app, selected.node) : await elementValues(app, selected.element);
  showSelection(app, info);
  const member = selected.element >= 0 ? app.model.memberOf.get(selected.element) : undefined;
  if (member !== undefined) await showDiagrams(byId("diagrams"), app.report, app.model, app.state, member);
  else byId("diagrams").hidden = true;
  return info;
}

function listenToClicks(app) {
  const { canvas } = app.view;
  let down = null;
  canvas.addEventListener("pointerdown", (event) => {
    down = [event.clientX, event.clientY];
  });
  canvas.addEventListener("click", (event) => {
    if (down && Math.hypot(event.clientX - down[0], event.clientY - down[1]) > 4) return;
    const box = canvas.getBoundingClientRect();
    const found = app.picker.at(
      event.clientX - box.left,
      event.clientY - box.top,
      [app.faces, app.members],
      app.state.displacement,
      shared.scale.value,
    );
    select(app, found);
  });
  app.find = (kind, id) => {
    const at = app.model[kind === "node" ? "nodes" : "elements"].id.indexOf(id);
    app.missing?.(at < 0 ? `no ${kind} ${Number.isFinite(id) ? id : "of this number"}` : "");
    return at >= 0 ? select(app, { [kind]: at }) : null;
  };
}

// The panel of a path stays while its step is shown; its slider follows the state.
function listenToPath(app) {
  let step = null,
    mark = null;
  const choose = (index) => {
    const states = app.step.path.states;
    const last = index === states.length - 1 && app.step.displacement;
    setChoice(app, last ? { kind: "end", index: 0 } : { kind: "state", index });
  };
  app.listeners.push(async () => {
    if (app.step !== step) {
      step = app.step;
      mark = null;
      byId("path").hidden = !step.path;
      if (step.path)
        mark = await showPath(byId("path"), app.report, step, nodeName(app.model, step.path.node), choose);
    }
    mark?.(app.choice.kind === "state" ? app.choice.index : -1);
  });
}

// The tables of the step that is shown are open.
function openTables(app) {
  let step = app.step;
  app.listeners.push(() => {
    const part = app.step !== step && byId(`step-${app.step.number}`);
    step = app.step;
    if (part) part.open = true;
  });
}

async function writeTables(app, json, model, report) {
  showModelTables(byId("model-tables"), json, model);
  for (const [i, step] of (json.steps ?? []).entries()) {
    byId("steps").append(await stepTables(report, model, step, i === 0 || json.steps.length <= 3));
  }
  return app;
}

async function startPicture(report, model, times) {
  const app = makeApp(report, model);
  await readSets(app);
  times.made = performance.now();
  app.motion = new Motion(app);
  app.select = (selected) => select(app, selected);
  startTheme(app);
  await firstView(app);
  listenToClicks(app);
  listenToPath(app);
  openTables(app);
  app.listeners.push(() => app.selected && select(app, app.selected));
  if (model.faces.element.length < SMALL) await setSwitch(app, "mesh", true);
  if (app.steps.length) await setStep(app, 0);
  times.step = performance.now();
  app.view.colours([[1, 1]]); // waits until the picture is there
  times.picture = performance.now();
  showViews(app);
  showControls(app);
  preparePaper(app);
  byId("save").addEventListener("click", () => savePicture(app));
  return app;
}

async function start() {
  const report = readReport();
  if (!report) throw new Error("there are no data of a run in this page");
  const times = { begun: performance.now() };
  showHeading(report.json);
  showNotes(byId("notes"), report.json);
  const model = await readModel(report);
  times.model = performance.now();
  let app = null;
  try {
    app = await startPicture(report, model, times);
  } catch (error) {
    say(`The model cannot be drawn here: ${error.message}. The tables below are complete.`);
    refill(byId("controls"));
    console.error(error);
  }
  await writeTables(app, report.json, model, report);
  times.tables = performance.now();
  return { app, times };
}

byId("print").addEventListener("click", () => window.print());
window.addEventListener("error", (event) => say(event.message));
window.addEventListener("unhandledrejection", (event) => say(String(event.reason?.message ?? event.reason)));
const ready = start();
window.finitesReport = testCalls(ready);
ready.catch((error) => {
  say(`The report cannot be shown: ${error.message}`);
});
