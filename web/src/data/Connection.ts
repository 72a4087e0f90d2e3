/** Whether the server answers: told when that changes; while it does not, it is asked again and again. */
export class Connection {
    #answers = true;
    #isAsking = false;

    /** @param wait  milliseconds between two questions. */
    constructor(
        readonly ask: () => Promise<unknown>,
        readonly tell: (answers: boolean) => void,
        readonly wait = 2000,
    ) {}

    /** To be called with each answer, and where there was none. */
    note(answers: boolean): void {
        if (answers === this.#answers) return;
        this.#answers = answers;
        this.tell(answers);
        if (!answers && !this.#isAsking) void this.#askOn();
    }

    /** What comes back is noted by whoever asks. */
    async #askOn(): Promise<void> {
        this.#isAsking = true;
        while (!this.#answers) {
            await new Promise((done) => setTimeout(done, this.wait));
            await this.ask().catch(() => undefined);
        }
        this.#isAsking = false;
    }
}
