// The picture on paper and as a file: white, whatever the screen has.

import { byId } from "./dom.js";

/** Draws as on paper, lets `take` have the canvas, and draws as on the screen again. */
function onWhite(app, take) {
  app.theme.paper(true);
  app.view.drawNow();
  take(app.view.canvas);
  app.theme.paper(false);
  app.view.drawNow();
}

/** Before the page is printed the picture is copied and everything that is folded is opened. */
export function preparePaper(app) {
  const paper = byId("paper");
  let folded = [];
  window.addEventListener("beforeprint", () => {
    app.motion.set(false);
    onWhite(app, (canvas) => {
      [paper.width, paper.height] = [canvas.width, canvas.height];
      paper.getContext("2d").drawImage(canvas, 0, 0);
    });
    folded = [...document.querySelectorAll("details:not([open]):not(.no-print)")];
    for (const part of folded) part.open = true;
  });
  window.addEventListener("afterprint", () => {
    for (const part of folded) part.open = false;
  });
}

function textLines() {
  const title = document.querySelector(".legend-title")?.textContent;
  const unit = document.querySelector(".legend-unit")?.textContent;
  const extremes = [...document.querySelectorAll("#legend dt")].map(
    (term) => `${term.textContent} ${term.nextElementSibling.textContent}`,
  );
  return [title, unit, ...extremes, byId("caption").textContent].filter(Boolean);
}

/** Draws the legend of the page onto a canvas: the same shapes, at the same places. */
function drawLegend(context, ratio) {
  const bar = document.querySelector("#legend svg");
  context.fillStyle = "#111";
  context.font = `${13 * ratio}px sans-serif`;
  textLines().forEach((line, i) => context.fillText(line, 12 * ratio, (22 + 18 * i) * ratio));
  if (!bar) return;
  const top = 34 + 18 * textLines().length;
  for (const part of bar.querySelectorAll("rect, text")) {
    const at = (name) => Number(part.getAttribute(name)) * ratio;
    const [x, y] = [at("x") + 12 * ratio, at("y") + top * ratio];
    context.fillStyle = part.getAttribute("fill") ?? "#111";
    if (part.tagName === "rect") context.fillRect(x, y, at("width"), at("height"));
    else context.fillText(part.textContent, x, y);
  }
}

function drawLabels(context, ratio) {
  const origin = byId("picture").getBoundingClientRect();
  context.font = `${12 * ratio}px sans-serif`;
  for (const label of document.querySelectorAll("#labels .label:not([hidden])")) {
    const box = label.getBoundingClientRect();
    context.fillStyle = "#111";
    context.fillText(label.textContent, (box.left - origin.left + 2) * ratio, (box.bottom - origin.top - 4) * ratio);
  }
}

/** Gives the picture with its legend as a file. */
export function savePicture(app) {
  const copy = document.createElement("canvas");
  const ratio = app.view.renderer.getPixelRatio();
  onWhite(app, (canvas) => {
    [copy.width, copy.height] = [canvas.width, canvas.height];
    const context = copy.getContext("2d");
    context.drawImage(canvas, 0, 0);
    drawLegend(context, ratio);
    drawLabels(context, ratio);
  });
  copy.toBlob((blob) => {
    const link = document.createElement("a");
    link.href = URL.createObjectURL(blob);
    const file = (app.report.json.deck || "model").split(/[/\\]/).pop();
    link.download = `${file.replace(/\.[^.]*$/, "")}.png`;
    link.click();
    setTimeout(() => URL.revokeObjectURL(link.href), 10000);
  });
}
