"""What the end-to-end tests stand on: servers, the other side, and scripted trouble."""
