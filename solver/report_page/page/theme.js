// Dark or light: as the system has it, or as the reader chooses. The picture takes its colours from the styles.

import { byId } from "./dom.js";

const dark = window.matchMedia("(prefers-color-scheme: dark)");

function isDark() {
  const chosen = document.documentElement.dataset.theme;
  return chosen ? chosen === "dark" : dark.matches;
}

/** Sets the colours of the picture and lets the button change them. */
export function startTheme(app) {
  const apply = (paper = false) => {
    const night = isDark() && !paper;
    app.view.background(paper ? "#ffffff" : night ? "#15181d" : "#f4f6f8");
    app.ink.setScalar(night ? 0.85 : 0.08);
  };
  app.theme = { paper: apply };
  const change = () => {
    apply();
    app.view.draw();
  };
  dark.addEventListener("change", change);
  byId("theme").addEventListener("click", () => {
    document.documentElement.dataset.theme = isDark() ? "light" : "dark";
    change();
  });
  change();
}
