/** The server has not answered at all: most often it has ended. */
export class NoAnswer extends Error {
    constructor() {
        super('zorcld has ended');
    }
}
