// Colour maps, perceptually uniform (viridis) or with more shades (turbo), and colours of groups.

import { ClampToEdgeWrapping, DataTexture, LinearFilter, RGBAFormat } from "three";

// 65 colours at equal distances, six hexadecimal digits each; between them colours are linear.
const STOPS = {
  viridis:
    "44015446075a470d6047136548186a481d6f482374482878472d7b46327e453781443b844240864045883e49893d4e8a" +
    "3b528b39568c375b8d355f8d33638d31678e2f6b8e2e6f8e2c728e2a768e297a8e277e8e26828e25858e23898e228d8d" +
    "21918c1f948c1f988b1e9c891fa08820a38622a78525ab8228ae802db27d32b67a38b9773fbc7346c06f4ec36b56c667" +
    "5ec96267cc5c70cf577ad15184d44b8ed64598d83ea2da37addc30b8de29c2df23cde11dd8e219e2e418ece51bf6e620" +
    "fde725",
  turbo:
    "30123b351e58392a733d358b4040a2424bb54456c74661d6466be34776ee4680f6458afc4294ff3d9efe37a8fa2fb2f4" +
    "28bceb22c5e21ccdd819d5cd18ddc219e3b91fe9af27eea432f2983ff68a4ef97d5dfc6f6dfe627dff568bff4b99fe42" +
    "a4fc3caffa37b9f635c3f134cdec34d7e535dfdf37e7d739eecf3af4c73af8be39fbb637fdac34fea130fe962bfd8a26" +
    "fb7e21f8721cf46617f05b12eb500ee5470bdf3f08d83706d02f05c82803be2102b41b01a916019e1001920b01850702" +
    "7a0403",
};
const LENGTH = 256;

/** Names of the colour maps. */
export const MAPS = Object.keys(STOPS);

/** The colour at t from 0 to 1: red, green, blue from 0 to 255. */
export function colourOf(map, t) {
  const stops = STOPS[map];
  const place = Math.min(1, Math.max(0, t)) * (stops.length / 6 - 1);
  const i = Math.min(Math.floor(place), stops.length / 6 - 2);
  const part = (stop, k) => parseInt(stops.slice(6 * stop + 2 * k, 6 * stop + 2 * k + 2), 16);
  return [0, 1, 2].map((k) => part(i, k) + (place - i) * (part(i + 1, k) - part(i, k)));
}

/** The map as a texture of one row. */
export function textureOf(map) {
  const data = new Uint8Array(4 * LENGTH);
  for (let i = 0; i < LENGTH; ++i) data.set([...colourOf(map, i / (LENGTH - 1)).map(Math.round), 255], 4 * i);
  const texture = new DataTexture(data, LENGTH, 1, RGBAFormat);
  texture.magFilter = texture.minFilter = LinearFilter;
  texture.wrapS = texture.wrapT = ClampToEdgeWrapping;
  texture.needsUpdate = true;
  return texture;
}

// Okabe and Ito (2008): apart for eyes that see fewer colours; then lighter and darker shades.
const GROUPS = ["0072b2", "e69f00", "009e73", "cc79a7", "56b4e9", "d55e00", "f0e442", "7f7f7f"];

/** The colour of a group by its number, red, green, blue from 0 to 255. */
export function groupColour(number) {
  if (number < 0) return [160, 160, 160];
  const base = GROUPS[number % GROUPS.length];
  const shade = 1 - 0.28 * (Math.floor(number / GROUPS.length) % 3);
  return [0, 2, 4].map((at) => Math.round(parseInt(base.slice(at, at + 2), 16) * shade));
}

/** As CSS and SVG write it. */
export const css = (rgb) => `rgb(${rgb.map(Math.round).join(" ")})`;
