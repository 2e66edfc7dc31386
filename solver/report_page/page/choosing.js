// What the user chooses of the groups: the one that gives the colours, and those that are hidden.

import { applyColours } from "./groups.js";
import { shownItems } from "./items.js";
import { refreshOverlays } from "./overlays.js";
import { showRange } from "./ranges.js";

/** Colours by another kind of group, or by values. */
export function setColouring(app, kind) {
  app.colourBy = kind;
  applyColours(app);
  showRange(app);
}

/** Hides or shows a section ("section 3") or a set ("set 0"). */
export async function setHidden(app, key, hidden) {
  if (hidden) app.hidden.add(key);
  else app.hidden.delete(key);
  app.shown = null;
  if (app.hidden.size) {
    const { elementCount, elements } = app.model;
    app.shown = new Uint8Array(elementCount).fill(1);
    for (const entry of app.hidden) {
      const [kind, number] = entry.split(" ");
      if (kind === "set") for (const element of app.elementSets[number]) app.shown[element] = 0;
      else
        elements.section.forEach((s, element) => {
          if (s === Number(number)) app.shown[element] = 0;
        });
    }
  }
  app.faces.setShown(app.shown);
  app.members.setShown(app.shown);
  const nodes = shownItems(app.model, "node", app.shown);
  for (const lines of [app.edges, app.meshLines]) lines?.setShown(nodes);
  showRange(app);
  await refreshOverlays(app);
}
