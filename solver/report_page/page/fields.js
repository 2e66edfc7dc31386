// Components of fields: those that the solver writes, and those that follow from them.
//
// Plane stress, in the axes of the element or part: with m = (sx + sy) / 2 and r = sqrt(((sx - sy) / 2)^2 + sxy^2)
//     s1, s2 = m +- r,    angle of s1 from x = atan2(2 sxy, sx - sy) / 2,
//     von Mises = sqrt(sx^2 - sx sy + sy^2 + 3 (sxy^2 + sxz^2 + syz^2)).
// Stresses of solids: principal stresses by the trigonometric solution of the characteristic polynomial, and
//     von Mises = sqrt(((sx - sy)^2 + (sy - sz)^2 + (sz - sx)^2) / 2 + 3 (sxy^2 + syz^2 + sxz^2)).

const DERIVED = {
  vector: ["length"],
  plane_stress: ["s1", "s2", "angle", "von Mises"],
  tensor: ["s1", "s2", "s3", "von Mises"],
  scalar: [],
};

/** Names of all components of a field: its own, then the derived ones. */
export function componentsOf(field) {
  return [...field.components, ...(DERIVED[field.form] ?? [])];
}

/** The component that is shown first: the length of a vector, von Mises, a moment, or the first. */
export function mainComponent(field) {
  return (
    ["length", "von Mises", "My", "M1"].find((name) => componentsOf(field).includes(name)) ?? field.components[0]
  );
}

/** Largest and least principal stress of a plane state and the angle of the largest from x, in degrees. */
export function principalPlane(sx, sy, sxy) {
  const mean = 0.5 * (sx + sy);
  const radius = Math.hypot(0.5 * (sx - sy), sxy);
  return { s1: mean + radius, s2: mean - radius, angle: (Math.atan2(2 * sxy, sx - sy) * 90) / Math.PI };
}

/** Principal stresses, the largest first. */
export function principal3(xx, yy, zz, xy, yz, xz) {
  const mean = (xx + yy + zz) / 3;
  const a = xx - mean,
    b = yy - mean,
    c = zz - mean;
  const p = Math.sqrt((a * a + b * b + c * c + 2 * (xy * xy + yz * yz + xz * xz)) / 6);
  if (!(p > 0)) return [mean, mean, mean];
  const det = a * (b * c - yz * yz) - xy * (xy * c - yz * xz) + xz * (xy * yz - b * xz);
  const phi = Math.acos(Math.min(1, Math.max(-1, det / (2 * p * p * p)))) / 3;
  const s1 = mean + 2 * p * Math.cos(phi);
  const s3 = mean + 2 * p * Math.cos(phi + (2 * Math.PI) / 3);
  return [s1, 3 * mean - s1 - s3, s3];
}

function planeValue(name, v, at, shear, item) {
  const sx = v[at],
    sy = v[at + 1],
    sxy = v[at + 2];
  if (name === "von Mises") {
    const through = shear.length ? shear[2 * item] ** 2 + shear[2 * item + 1] ** 2 : 0;
    return Math.sqrt(sx * sx - sx * sy + sy * sy + 3 * (sxy * sxy + through));
  }
  return principalPlane(sx, sy, sxy)[name];
}

function tensorValue(name, v, at) {
  const [xx, yy, zz, xy, yz, xz] = v.subarray(at, at + 6);
  if (name === "von Mises") {
    return Math.sqrt(0.5 * ((xx - yy) ** 2 + (yy - zz) ** 2 + (zz - xx) ** 2) + 3 * (xy * xy + yz * yz + xz * xz));
  }
  return principal3(xx, yy, zz, xy, yz, xz)["s1 s2 s3".split(" ").indexOf(name)];
}

/** The value of a component, own or derived, of one item. `values` are all numbers of the field. */
export function valueAt(field, component, values, shear, item) {
  const width = field.components.length;
  const at = item * width;
  const own = field.components.indexOf(component);
  if (own >= 0) return values[at + own];
  if (field.form === "plane_stress") return planeValue(component, values, at, shear, item);
  if (field.form === "tensor") return tensorValue(component, values, at);
  let sum = 0;
  for (let k = 0; k < width; ++k) sum += values[at + k] ** 2;
  return Math.sqrt(sum);
}

const NOTHING = 1e-9; // parts of the largest value of its kind: rounding

/** A value, or 0 where it is nothing but rounding beside the largest of its kind. */
export const cleared = (value, largest) => (Math.abs(value) < NOTHING * largest ? 0 : value);

// Forces and moments stand in one field; all else of a field is measured alike.
const isMoment = (component) => /^(T$|M|m)/.test(component);

/** By component, own or derived: the largest value of its kind in the field. An angle has none. */
export async function sizesOf(report, field) {
  if (!field.sizes) {
    const values = field.values ?? (await report.array(field.array));
    const width = field.components.length;
    const most = [0, 0];
    for (let i = 0; i < values.length; ++i) {
      const kind = isMoment(field.components[i % width]) ? 1 : 0;
      const size = Math.abs(values[i]);
      if (size > most[kind] && size < Infinity) most[kind] = size;
    }
    field.sizes = (component) => (component === "angle" ? 0 : most[isMoment(component) ? 1 : 0]);
  }
  return field.sizes;
}

/** All values of a component, one an item. */
export async function scalarOf(report, field, component) {
  const values = field.values ?? (await report.array(field.array));
  if (field.components.length === 1) return values;
  const [shear, sizes] = await Promise.all([report.array(field.shear), sizesOf(report, field)]);
  const largest = sizes(component);
  const result = new Float32Array(values.length / field.components.length);
  for (let i = 0; i < result.length; ++i) {
    result[i] = cleared(valueAt(field, component, values, shear, i), largest);
  }
  return result;
}

/** A name that differs for the fields of one step. */
export function keyOf(field) {
  return [field.name, field.on, field.of ?? ""].join("|");
}

/** How a field is called in lists. */
export function labelOf(field) {
  const side = { min: " (least)", max: " (largest)" }[field.of] ?? "";
  return field.label + side;
}

/** Least and largest finite value with the items that have them; null without any. */
export function rangeOf(values, counts = null) {
  let low = Infinity,
    high = -Infinity,
    lowAt = -1,
    highAt = -1;
  for (let i = 0; i < values.length; ++i) {
    const value = values[i];
    if (!Number.isFinite(value) || (counts && !counts[i])) continue;
    if (value < low) [low, lowAt] = [value, i];
    if (value > high) [high, highAt] = [value, i];
  }
  return lowAt < 0 ? null : { low, high, lowAt, highAt };
}
