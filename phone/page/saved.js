// A saved page: the lines are in the document itself.

import { History } from "./state/history.js";
import { parse } from "./state/json.js";
import { show } from "./views/view.js";

const history = new History();
show(history);
history.append(parse(document.getElementById("lines").textContent).lines.map(({ line }) => line));
