"""What the tests see of the application, and the world they put around it."""
