// Does to the phone what a person asks for, one thing after the other.

const longestWait = 5000; // milliseconds for the lines of what was done

/** Leaves in the browser's own measures how long the last gesture took, until what came of it was drawn. */
function measure(start) {
  performance.clearMeasures("gesture");
  performance.measure("gesture", { start });
}

export class Actions {
  #transport;
  #history;
  #message;
  #last = Promise.resolve();

  /** `message` is shown why something could not be done. */
  constructor(transport, history, message) {
    this.#transport = transport;
    this.#history = history;
    this.#message = message;
  }

  /**
   * Plays what a gesture makes of the phone as it then is: `gesture(state)` gives lines. Ends once the lines
   * that came of it are here, so that the next gesture knows of them.
   */
  play(gesture) {
    return this.#inTurn(async () => {
      const start = performance.now();
      await this.#history.complete();
      const lines = gesture(this.#history.last);
      const { next } = await this.#transport.play(lines);
      await this.#reached(next - 1);
      requestAnimationFrame(() => measure(start));
    });
  }

  /** A fresh phone, on which a scenario is played if there is one. */
  fresh(scenario) {
    return this.#inTurn(() => this.#transport.fresh(scenario));
  }

  /** Does something of which a failure is to be told. */
  async attempt(work) {
    try {
      this.#message.clear();
      await work();
      return true;
    } catch (error) {
      this.#message.show(error.message);
      return false;
    }
  }

  #inTurn(work) {
    const turn = this.#last.then(() =>
      this.attempt(async () => {
        this.#history.lookAt(this.#history.length);
        await work();
      }),
    );
    this.#last = turn;
    return turn;
  }

  /** Waits until so many lines are here, or for long enough. */
  #reached(count) {
    return new Promise((done) => {
      const look = (isLate) => {
        if (!isLate && this.#history.length < count) return;
        this.#history.removeEventListener("change", changed);
        clearTimeout(timer);
        done();
      };
      const changed = () => look(false);
      const timer = setTimeout(() => look(true), longestWait);
      this.#history.addEventListener("change", changed);
      look(false);
    });
  }
}
