// Does to the phone what a person asks for, one thing after the other.

const longestWait = 5000; // milliseconds for the lines of what was done

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
      const { next } = await this.#transport.play(
        gesture(this.#history.stateAfter(this.#history.lines.length)),
      );
      await this.#reached(next - 1);
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
        this.#history.lookAt(this.#history.lines.length);
        await work();
      }),
    );
    this.#last = turn;
    return turn;
  }

  #reached(count) {
    return new Promise((done) => {
      const look = () => {
        if (this.#history.lines.length < count) return;
        this.#history.removeEventListener("change", look);
        clearTimeout(timer);
        done();
      };
      const timer = setTimeout(() => {
        this.#history.removeEventListener("change", look);
        done();
      }, longestWait);
      this.#history.addEventListener("change", look);
      look();
    });
  }
}
