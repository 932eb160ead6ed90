// Requests to the push server and its answers, as people read them.

const rest = ["jsonApp", "jsonDevice", "jsonLibreria", "jsonGeo"];
const fieldsOf = new Map([
  ["pushlibRegistrarToken", ["token", ...rest]],
  ["pushlibCambioToken", ["tokenAntiguo", "tokenNuevo", ...rest]],
]);

/**
 * The fields of a request's body, as [name, value] in their order. A value may hold "&" and "=": it ends where
 * the next field's name first stands. A body that is none of the library's is one field.
 */
export function fields(body) {
  if (body === null) return [];
  const task = /^&tarea=([^&]*)/.exec(body)?.[1];
  const found = [["tarea", task]];
  let at = `&tarea=${task}`.length;
  const names = fieldsOf.get(task) ?? [];
  for (const [i, name] of names.entries()) {
    const start = at + `&${name}=`.length;
    const isLast = i + 1 === names.length;
    at = isLast ? body.length : body.indexOf(`&${names[i + 1]}=`, start);
    if (!body.startsWith(`&${name}=`, start - `&${name}=`.length)) return [["body", body]];
    found.push([name, body.slice(start, at)]);
  }
  return names.length > 0 ? found : [["body", body]];
}

const faults = new Map([
  ["refuse", "No connection"],
  ["untrusted", "A certificate of another authority"],
  ["reset", "The connection is cut once the request has been read"],
  ["truncate", "The connection is cut in the middle of the answer"],
  ["silence", "The request is read and never answered"],
]);

/** A queued answer of the push server, or what befalls the request in its place. */
export function answerInWords({ fault, status, body, bodyHex }) {
  if (fault !== undefined) return faults.get(fault) ?? fault;
  const content = bodyHex === undefined ? body : bodyHex && `the bytes ${bodyHex}`;
  return `${status} ${content || "(empty)"}`;
}

/** What the development server answers to a request when nothing is queued. */
export function ownAnswer(body) {
  const values = new Map(fields(body));
  const token = values.get("tokenNuevo") || values.get("token") || "";
  return `{"error":"no","token":${JSON.stringify(token)}}`;
}
